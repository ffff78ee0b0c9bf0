// The model behind the manual grid: a row for each point of a data set, edited rows among them, and an empty
// row at the end to type into. Nothing reaches the data set before Commit; until then the edited rows are
// kept beside the graph in the steps of a session.
#pragma once

#include "data/series/ds_info.h"
#include "dialog/manual/pending_rows.h"
#include "graph/model/series.h"

#include <QAbstractTableModel>
#include <QStringList>
#include <functional>
#include <map>
#include <memory>

namespace lumoplot {

/// What to do with rows whose X another row has as well while the data set allows no duplicates.
enum class TEqualX { Ask, Refuse };

class TManualPointsModel : public QAbstractTableModel {
    Q_OBJECT

public:
    static constexpr int kXColumn = 0;
    static constexpr int kYColumn = 1;
    static constexpr int kYErrorColumn = 2; ///< shown when it is used

    explicit TManualPointsModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}
    ~TManualPointsModel() override;

    /// Shows the points of a data set (null for none) and drops all edits. The model notices by itself when
    /// they change or the data set goes.
    void Show(TSeries* series);
    const TSeries* Series() const { return m_series; }
    void SetXFormat(TColumnFormat format);
    /// The data set has errors of Y, or they were asked for.
    bool ShowsYErrors() const { return m_wantsYErrors || m_hasYErrors; }
    /// Errors that are there are shown in any case.
    void ShowYErrors(bool wanted);

    /// Runs an edit, which makes it a step: "edit points", "insert rows".
    using TStepMaker = std::function<void(const char* name, const std::function<void()>& edit)>;
    void SetStepMaker(TStepMaker maker) { m_makeStep = std::move(maker); }

    /// Null without edits; the same object until the next edit.
    std::shared_ptr<const TPendingRows> Pending() const;
    /// The same as if that text stood in the cell.
    std::shared_ptr<const TPendingRows> PendingWith(const QModelIndex& cell, const QString& text) const;
    /// Shows a data set with rows that were pending earlier (null for none). The first row that differs from
    /// those that were shown before.
    int ShowPending(TSeries& series, const TPendingRows* pending);

    bool HasEdits() const { return m_rows.IsEdited(); }
    /// Writes the edits into the data set with one notification. Throws EManualCell for a cell that is no
    /// value and leaves everything as it is. Rows that would merge into others are asked about (Yes allows
    /// duplicates), or nothing is written and the result is false.
    bool Commit(TEqualX equalX);

    // Edits. Rows are those of the grid; texts become values when they are committed.
    void Paste(int row, int column, const QList<QStringList>& block);
    void InsertRows(int row, int count);
    void DeleteRows(int row, int count);
    void ClearCells(const QModelIndexList& cells);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : ShowsYErrors() ? 3 : 2;
    }
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    /// Something was edited, put back or committed.
    void Edited();

private:
    int Rows() const { return static_cast<int>(m_rows.Count()); }
    void Watch(TSeries* series);
    void PointsChanged(TChangeReasons reasons);
    QString CellText(const TManualRow& row, int column) const;
    std::string ReasonAgainstCell(int row, int column) const;
    TManualRow WithText(TManualRow row, int column, const QString& text) const;
    TManualRow RowOrNew(int row) const;
    void MakeStep(const char* name, const std::function<void()>& edit);
    void Replace(int first, int wanted, std::vector<TManualRow> rows);
    void ReplaceEach(std::map<int, TManualRow> rows);

    TSeries* m_series = nullptr;
    TManualRows m_rows;
    TStepMaker m_makeStep;
    mutable std::shared_ptr<const TPendingRows> m_pending; ///< null when it is to be made anew
    TColumnFormat m_xFormat = TColumnFormat::Number;
    bool m_wantsYErrors = false;
    bool m_hasYErrors = false;      ///< when the points were shown
    bool m_marksEmptyCells = false; ///< a commit was refused: cells without a text are at fault too
    bool m_committing = false;
    bool m_showsAgainSoon = false;
};

} // namespace lumoplot
