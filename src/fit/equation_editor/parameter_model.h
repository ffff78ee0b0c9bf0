// The parameters of a curve fit as a table that is edited in place: a row for each, with name, value,
// standard error, vary, bounds, unit and the formula that ties it to others.
#pragma once

#include "fit/equation_editor/fit_access.h"

#include <QAbstractTableModel>

class QTableView;

namespace lumoplot {

class TParameterModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum TColumn { Name, Value, Error, Vary, Min, Max, Units, Tie, ColumnCount };

    TParameterModel(TFitAccess& access, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// One change of the fit; false, with a hint where the pointer is, for what the parameter can not take.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// The fit may have changed.
    void Update();
    /// Why the cell can not take the text; empty when it can.
    QString FaultOf(const QModelIndex& index, const QString& text) const;

Q_SIGNALS:
    /// A cell was edited.
    void CellEdited();

private:
    TDBLParameter* ParameterOf(const QModelIndex& index) const;
    QString TextOf(const TDBLParameter& parameter, int number, int column, bool isWhole) const;
    QString ErrorText(int number) const;
    void Take(TDBLParameter& parameter, int column, const std::string& text) const;

    TFitAccess& m_access;
    int m_rows = 0;
};

/// Gives the table the model and its ways with keys: Return edits a cell and takes what was typed, Tab leaves
/// the table. Cells that hold no value that they may hold are marked while they are typed in.
void SetUpParameterTable(QTableView& table, TParameterModel& model);

} // namespace lumoplot
