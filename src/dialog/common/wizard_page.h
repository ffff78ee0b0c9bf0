// A page of the data editor. The dialog knows its pages by this interface alone, never their controls; a page
// knows the dialog by the few things that it may ask of it.
#pragma once

#include "graph/model/child_graph.h"
#include "session/graph_session.h"
#include "support/guard.h"

#include <QWidget>
#include <string>

namespace lumoplot {

/// What the dialog offers its pages.
class TWizardContext {
public:
    virtual ~TWizardContext() = default;
    virtual TxyChildGr& WorkGraph() = 0;
    /// The data set that the pages show, or null.
    virtual TSeries* CurrSeries() = 0;
    /// True while controls are being filled: no handler may write to the data set then.
    virtual bool Filling() const = 0;
    virtual void SetFilling(bool value) = 0;
    /// Writes what the pages still hold into the current data set; throws when one cannot.
    virtual void CommitPages() = 0;
    /// Fills all pages again from the selected data set.
    virtual void RefillPages() = 0;
    /// Lists the data sets again, after some have come or gone, and selects the one with that number.
    virtual void FillList(int number) = 0;
    /// The name edit has given the current data set another name.
    virtual void ShowSeriesName(const QString& name) = 0;
    /// What the pages change of the graph goes through it.
    virtual TGraphSession& Session() = 0;
};

class TWizardPage : public QWidget {
    Q_OBJECT

public:
    explicit TWizardPage(TWizardContext& context, QWidget* parent = nullptr)
        : QWidget(parent), m_context(context) {}

    /// Fills every control from the data set; the dialog has set its Filling guard.
    virtual void FillFrom(TSeries& series) = 0;
    /// There is no data set to show.
    virtual void ShowNothing() {}
    /// Writes what is still being edited into the data set; throws when it cannot.
    virtual void Commit(TSeries& series) { static_cast<void>(series); }
    /// Another page is about to be shown: writes what can be written without asking or refusing.
    virtual void Leave(TSeries& series) { static_cast<void>(series); }
    /// The preview, which may have recomputed some of the values shown, has been left.
    virtual void RefreshAfterPreview(TSeries& series) { static_cast<void>(series); }

protected:
    TWizardContext& Context() const { return m_context; }

    /// Makes a change of the current data set a step unless the controls are being filled. `what` stands
    /// before the data set's name in that of the step ("line colour of "). Changes with one key that follow
    /// each other are one step. An exception is shown, and the graph is what it was before.
    template <class TAction>
    void Edit(const std::string& what, TMergeKey key, TAction&& action) {
        TSeries* series = m_context.CurrSeries();
        if (m_context.Filling() || !series) return;
        const std::string name = what + series->SeriesName();
        Guarded([&] { m_context.Session().Change(name, key, [&] { action(*series); }); });
    }
    template <class TAction>
    void Edit(const std::string& what, TAction&& action) {
        Edit(what, TMergeKey{}, std::forward<TAction>(action));
    }

private:
    TWizardContext& m_context;
};

/// Sets the Filling guard for a scope and puts the old value back.
class TFillingScope {
public:
    explicit TFillingScope(TWizardContext& context) : m_context(context), m_before(context.Filling()) {
        context.SetFilling(true);
    }
    ~TFillingScope() { m_context.SetFilling(m_before); }
    TFillingScope(const TFillingScope&) = delete;
    TFillingScope& operator=(const TFillingScope&) = delete;

private:
    TWizardContext& m_context;
    bool m_before;
};

} // namespace lumoplot
