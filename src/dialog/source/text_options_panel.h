// The options of a text source: how its rows divide into cells, which columns are X and Y, and which rows are
// used. "Auto" shows what was found in the text; unchecking it keeps that as a choice of the user. Every
// change goes into the data set's source description at once.
#pragma once

#include "data/series/ds_info.h"
#include "dialog/common/wizard_page.h"
#include "sources/text/text_format.h"

#include <functional>
#include <memory>

namespace Ui {
class TTextOptionsPanel;
}

class QComboBox;
class QLineEdit;

namespace lumoplot {

class TTextOptionsPanel : public QWidget {
    Q_OBJECT

public:
    explicit TTextOptionsPanel(TWizardContext& context, QWidget* parent = nullptr);
    ~TTextOptionsPanel() override;

    /// Shows the data set's description, and what was found where it leaves something open (null: nothing
    /// was). The edit that the user is typing into is left alone unless the data set is another one.
    void FillFrom(const TSeries& series, const TTextFormat* found);
    /// Takes over texts whose editing has not been finished.
    void TakePendingTexts();
    /// Shows the data set's row hit frequency while it is an automatic one.
    void ShowFrequency(const TSeries& series);

Q_SIGNALS:
    /// The description has changed.
    void Changed();

private:
    using TChange = std::function<void(TSeries&)>;

    void ConnectText();
    void ConnectReading();
    void ConnectColumns();
    void ConnectRows();
    void Change(const TChange& change);
    void TakeSeparators();
    void TakeColumn(QComboBox& box, bool isX);
    void TakeYErrors();
    void TakeBound(bool first);
    TColumnFormat BoundFormat(const TSeries& series) const;
    void MarkFormulas(const TSeries& series, const TTextFormat* found);

    void SetUnlessTyped(QLineEdit& edit, const QString& text);
    void FillText(const TDSInfo& info);
    void FillReading(const TTextWishes& wishes, const TTextFormat* found);
    TTextWishes ShownWishes() const;
    void FillColumns(const TSeries& series, const TTextFormat* found);
    void FillYErrors(const TYErrorRule& rule, const TTextFormat* found);
    void FillRows(const TSeries& series);

    TWizardContext& m_context;
    std::unique_ptr<Ui::TTextOptionsPanel> m_ui;
    const TSeries* m_series = nullptr; ///< last shown, only compared
    bool m_isOther = true;             ///< while filling: the data set is another one than before
    TTextFormat m_found;               ///< how the text was last read, defaults when it was not
};

} // namespace lumoplot
