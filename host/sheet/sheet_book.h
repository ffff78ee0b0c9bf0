// The sheets that belong to the window's graph. They are offered to its data sets as sources, belong to the
// steps of its session, and lie as CSV files beside its file: "plot.ltp" has "plot.Sheet 1.sheet.csv".
#pragma once

#include "host/sheet/sheet.h"
#include "session/side_state.h"

#include <QObject>
#include <QStringList>
#include <functional>
#include <span>

namespace lumoplot {

class TGraphSession;

class TSheetBook : public QObject {
    Q_OBJECT

public:
    /// The session is borrowed; nothing is recorded yet.
    explicit TSheetBook(TGraphSession& session, QObject* parent = nullptr);
    ~TSheetBook() override;

    const std::vector<TSheet>& Sheets() const;
    /// A step; returns the number of the new sheet, from 0.
    int Add(const TSheet* content = nullptr);
    /// A step, unless it changes nothing. Data sets of the sheet are read again; what can not be read keeps
    /// its points, and Problem() says why.
    void Change(int sheet, const QString& step, const std::function<void(TSheet&)>& action);
    /// A step; data sets of the sheet have the new name as their source. Throws EFileError for a name that is
    /// empty, longer than 60 characters, no part of a file's name, or that of another sheet.
    void Rename(int sheet, const QString& name);
    /// A step; data sets of the sheet keep their points.
    void Delete(int sheet);
    /// Why the last change could not be followed by a data set; empty when it was.
    const QString& Problem() const { return m_problem; }

    /// No step: there are other sheets now, that lie beside the file, were left in a recovery file, or none.
    void LoadBeside(const QString& graphFile);
    void Restore(std::span<const std::uint8_t> bytes);
    void Clear();
    /// Writes all sheets beside the file. Throws EFileError.
    void SaveBeside(const QString& graphFile) const;
    /// To be called when the graph was saved, too: removes the files there that sheets were loaded from or
    /// written to, and that belong to none now, as these were deleted or renamed.
    void RemoveOthersBeside(const QString& graphFile);

Q_SIGNALS:
    void Changed();

private:
    class TState;

    void Become(std::vector<TSheet> sheets);
    void CheckName(int sheet, const QString& name) const;
    void Follow(const std::string& name);
    std::string TextOfSheet(const std::string& name) const;
    std::string FreeName() const;

    TGraphSession& m_session;
    std::shared_ptr<const TState> m_state; ///< null without sheets
    QStringList m_filed;                   ///< the files that these sheets were written to or loaded from
    QString m_problem;
};

} // namespace lumoplot
