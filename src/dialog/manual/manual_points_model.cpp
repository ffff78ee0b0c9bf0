#include "dialog/manual/manual_points_model.h"

#include "controls/mark_color.h"
#include "controls/texts.h"
#include "data/series/y_error_rule.h"
#include "dialog/common/x_value_text.h"
#include "dialog/manual/manual_commit.h"
#include "support/message_sink.h"
#include "support/update_hold.h"

#include <QTimer>
#include <algorithm>
#include <map>

namespace lumoplot {
namespace {

/// The text of a cell of a row, constant or not.
auto& TextOf(auto& row, int column) {
    return column == TManualPointsModel::kXColumn   ? row.X
           : column == TManualPointsModel::kYColumn ? row.Y
                                                    : row.YError;
}

} // namespace

TManualPointsModel::~TManualPointsModel() {
    Watch(nullptr);
}

/// Listens to one data set at a time.
void TManualPointsModel::Watch(TSeries* series) {
    if (series == m_series) return;
    const auto key = reinterpret_cast<std::intptr_t>(this);
    if (m_series) m_series->AddChangeHandler(key, {});
    m_series = series;
    if (m_series)
        m_series->AddChangeHandler(key,
                                   [this](TDataSeries&, TChangeReasons reasons) { PointsChanged(reasons); });
}

void TManualPointsModel::Show(TSeries* series) {
    beginResetModel();
    Watch(series);
    m_rows.Show(series ? &series->Points() : nullptr);
    m_hasYErrors = series && series->HasYErrors();
    m_pending.reset();
    m_marksEmptyCells = false;
    endResetModel();
    Q_EMIT Edited();
}

void TManualPointsModel::ShowYErrors(bool wanted) {
    if (wanted == m_wantsYErrors) return;
    beginResetModel();
    m_wantsYErrors = wanted;
    endResetModel();
}

std::shared_ptr<const TPendingRows> TManualPointsModel::Pending() const {
    if (!m_series || !HasEdits()) return nullptr;
    if (!m_pending || m_pending->SeriesNumber != m_series->SeriesIndex()) {
        auto pending = std::make_shared<TPendingRows>();
        pending->SeriesNumber = m_series->SeriesIndex();
        pending->Rows = m_rows;
        m_pending = std::move(pending);
    }
    return m_pending;
}

std::shared_ptr<const TPendingRows> TManualPointsModel::PendingWith(const QModelIndex& cell,
                                                                    const QString& text) const {
    if (!m_series || !cell.isValid()) return Pending();
    auto pending = std::make_shared<TPendingRows>();
    pending->SeriesNumber = m_series->SeriesIndex();
    pending->Rows = m_rows;
    pending->Rows.Replace(static_cast<std::size_t>(cell.row()), cell.row() < Rows() ? 1 : 0,
                          {WithText(RowOrNew(cell.row()), cell.column(), text)});
    return pending;
}

int TManualPointsModel::ShowPending(TSeries& series, const TPendingRows* pending) {
    const TManualRows before = m_rows;
    beginResetModel();
    Watch(&series);
    if (pending)
        m_rows = pending->Rows;
    else
        m_rows.Show(&series.Points());
    m_hasYErrors = series.HasYErrors();
    m_pending.reset();
    m_marksEmptyCells = false;
    endResetModel();
    Q_EMIT Edited();
    return static_cast<int>(m_rows.FirstDifference(before));
}

// The points that the rows refer to are changing: they are shown again when all of the change is done. Rows
// with edits have points of their own.
void TManualPointsModel::PointsChanged(TChangeReasons reasons) {
    if (reasons.Has(TDataSeries::kDestroyed)) {
        m_series = nullptr; // its handlers go with it
        return Show(nullptr);
    }
    const bool points = reasons.Has(TDataSeries::kPointChanged) || reasons.Has(TDataSeries::kPointAdded);
    if (!points || m_committing || m_showsAgainSoon || HasEdits()) return;
    m_showsAgainSoon = true;
    beginResetModel();
    m_rows.Show(nullptr);
    endResetModel();
    QTimer::singleShot(0, this, [this] {
        m_showsAgainSoon = false;
        if (!HasEdits()) Show(m_series);
    });
}

void TManualPointsModel::SetXFormat(TColumnFormat format) {
    if (format == m_xFormat) return;
    m_xFormat = format;
    Q_EMIT dataChanged(index(0, kXColumn), index(Rows(), kXColumn));
    Q_EMIT headerDataChanged(Qt::Horizontal, kXColumn, kXColumn);
}

bool TManualPointsModel::Commit(TEqualX equalX) {
    if (!m_series || !HasEdits()) return true;
    m_marksEmptyCells = true;
    Q_EMIT dataChanged(index(0, 0), index(Rows(), columnCount() - 1));
    TManualPoints result = PointsOf(m_rows, m_xFormat, m_series->Points(), m_series->MergeRule());
    if (result.Merged > 0) {
        if (equalX == TEqualX::Refuse) return false;
        const std::string rows =
            result.Merged == 1 ? "1 row has" : std::to_string(result.Merged) + " rows have";
        // No, and Esc, lose nothing.
        const std::string question =
            rows + " the X of another row. Merge them? (The last row of each X stays; No keeps them all.)";
        if (!AskYesNo(question, TMessageKind::Warning)) {
            m_series->SetDuplicatesAllowed(true);
            result = PointsOf(m_rows, m_xFormat, m_series->Points(), m_series->MergeRule());
        }
    }
    m_committing = true;
    {
        const TUpdateHold hold(*m_series);
        m_series->SwapPoints(std::move(result.Points));
        if (result.EditsYErrors)
            m_series->DataSourceInfo().SetYErrorRule({}); // they are what was typed
        else
            RenewYErrors(*m_series);
    }
    m_committing = false;
    Show(m_series);
    return true;
}

int TManualPointsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || !m_series ? 0 : Rows() + 1;
}

TManualRow TManualPointsModel::RowOrNew(int row) const {
    return row < Rows() ? m_rows.Row(static_cast<std::size_t>(row)) : TManualRow{};
}

QString TManualPointsModel::CellText(const TManualRow& row, int column) const {
    const QString& text = TextOf(row, column);
    if (!text.isNull() || row.Point == TManualRow::kNew) return text;
    const TSeriesPoint point = m_rows.Point(row.Point);
    if (column == kYErrorColumn)
        return point.YError > 0 ? XValueText(point.YError, TColumnFormat::Number) : QString();
    return column == kXColumn ? XValueText(point.X, m_xFormat) : XValueText(point.Y, TColumnFormat::Number);
}

std::string TManualPointsModel::ReasonAgainstCell(int row, int column) const {
    const TManualRow content = RowOrNew(row);
    if (column == kYErrorColumn)
        return content.YError.isNull() ? std::string() : ReasonAgainst(content.YError, column, m_xFormat);
    const QString& text = TextOf(content, column);
    const QString& other = column == kXColumn ? content.Y : content.X;
    if (text.isNull() && content.Point != TManualRow::kNew) return {};
    const bool empty = text.trimmed().isEmpty();
    const bool otherEmpty =
        other.trimmed().isEmpty() && (!other.isNull() || content.Point == TManualRow::kNew);
    if (empty && (otherEmpty || !m_marksEmptyCells)) return {};
    return ReasonAgainst(text, column, m_xFormat);
}

QVariant TManualPointsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: return CellText(RowOrNew(index.row()), index.column());
    case Qt::TextAlignmentRole: return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
    case Qt::ToolTipRole: {
        const std::string reason = ReasonAgainstCell(index.row(), index.column());
        return reason.empty() ? QVariant() : QString::fromStdString(reason);
    }
    case Qt::BackgroundRole:
        return ReasonAgainstCell(index.row(), index.column()).empty() ? QVariant() : QBrush(FaultyBase());
    default: return {};
    }
}

QVariant TManualPointsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Vertical)
        return section < Rows() ? QVariant(section + 1) : QVariant(QStringLiteral("*"));
    if (section == kYColumn) return QStringLiteral("Y");
    if (section == kYErrorColumn) return TTexts::tr("Error of Y");
    return m_xFormat == TColumnFormat::DateTime ? TTexts::tr("X (date and time)") : QStringLiteral("X");
}

Qt::ItemFlags TManualPointsModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable : Qt::NoItemFlags;
}

TManualRow TManualPointsModel::WithText(TManualRow row, int column, const QString& text) const {
    TextOf(row, column) = text.isNull() ? QLatin1String("") : text;
    return row;
}

bool TManualPointsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole) return false;
    const TManualRow row = RowOrNew(index.row());
    if (value.toString() == CellText(row, index.column())) return true;
    MakeStep("edit points",
             [&] { Replace(index.row(), 1, {WithText(row, index.column(), value.toString())}); });
    return true;
}

void TManualPointsModel::MakeStep(const char* name, const std::function<void()>& edit) {
    m_makeStep ? m_makeStep(name, edit) : edit();
}

/// Also tells the views. The row for new points becomes the first of those that are put in its place, so that
/// who edits it stays on it.
void TManualPointsModel::Replace(int first, int wanted, std::vector<TManualRow> rows) {
    const int row = std::clamp(first, 0, Rows());
    const int removed = std::min(wanted, Rows() - row);
    const auto inserted = static_cast<int>(rows.size());
    const int kept = std::min(removed, inserted);
    const int behindNew = inserted > removed && row + kept == Rows() ? 1 : 0;
    if (inserted > removed) beginInsertRows({}, row + kept + behindNew, row + inserted - 1 + behindNew);
    if (removed > inserted) beginRemoveRows({}, row + kept, row + removed - 1);
    m_rows.Replace(static_cast<std::size_t>(row), static_cast<std::size_t>(removed), std::move(rows));
    m_pending.reset();
    if (inserted > removed) endInsertRows();
    if (removed > inserted) endRemoveRows();
    const int changed = kept + behindNew;
    if (changed > 0) Q_EMIT dataChanged(index(row, 0), index(row + changed - 1, columnCount() - 1));
    Q_EMIT headerDataChanged(Qt::Vertical, row, Rows());
    Q_EMIT Edited();
}

void TManualPointsModel::Paste(int row, int column, const QList<QStringList>& block) {
    std::vector<TManualRow> rows;
    rows.reserve(static_cast<std::size_t>(block.size()));
    for (qsizetype i = 0; i < block.size(); ++i) {
        TManualRow content = RowOrNew(row + static_cast<int>(i));
        for (qsizetype j = 0; j < block[i].size() && column + j < columnCount(); ++j)
            content = WithText(std::move(content), column + static_cast<int>(j), block[i][j]);
        rows.push_back(std::move(content));
    }
    const auto count = static_cast<int>(rows.size());
    if (count > 0) MakeStep("paste points", [&] { Replace(row, count, std::move(rows)); });
}

void TManualPointsModel::InsertRows(int row, int count) {
    if (!m_series || count <= 0) return;
    MakeStep("insert rows",
             [&] { Replace(row, 0, std::vector<TManualRow>(static_cast<std::size_t>(count))); });
}

void TManualPointsModel::DeleteRows(int row, int count) {
    const int last = std::min(row + count, Rows());
    if (row < last) MakeStep("delete rows", [&] { Replace(row, last - row, {}); });
}

void TManualPointsModel::ClearCells(const QModelIndexList& cells) {
    std::map<int, TManualRow> rows;
    for (const QModelIndex& cell : cells) {
        if (cell.row() >= Rows()) continue;
        const auto place = rows.try_emplace(cell.row(), RowOrNew(cell.row())).first;
        place->second = WithText(std::move(place->second), cell.column(), {});
    }
    if (rows.empty()) return;
    MakeStep("clear cells", [&] { ReplaceEach(std::move(rows)); });
}

/// Neighbouring rows at once.
void TManualPointsModel::ReplaceEach(std::map<int, TManualRow> rows) {
    for (auto row = rows.begin(); row != rows.end();) {
        const int first = row->first;
        std::vector<TManualRow> run;
        for (; row != rows.end() && row->first == first + static_cast<int>(run.size()); ++row)
            run.push_back(std::move(row->second));
        const auto count = static_cast<int>(run.size());
        Replace(first, count, std::move(run));
    }
}

} // namespace lumoplot
