// The list of the data sets with its eight buttons: shows which ones there are and which one is chosen, and
// does to the chain what a button says, as one step.
#pragma once

#include <QObject>

class QPushButton;
class QString;
class QWidget;

namespace Ui {
class TxyDataWizard;
}

namespace lumoplot {

class TSeries;
class TWizardContext;

class TDataSetList : public QObject {
    Q_OBJECT

public:
    /// The controls are those of the window; all are borrowed.
    TDataSetList(TWizardContext& context, const Ui::TxyDataWizard& ui, QWidget& window);

    /// Lists the data sets anew and chooses the one with that number, all in silence.
    void Fill(int number);
    /// Chooses another one, in silence.
    void Choose(const TSeries& series);
    /// The place of the chosen data set from 0; -1 for none.
    int ChosenPlace() const;
    /// The number of the chosen data set; -1 for none.
    int ChosenNumber() const;
    void ShowName(const TSeries& series, const QString& name);
    void ShowLook(const TSeries& series);
    /// Enables what works on the data set that is shown, or disables it.
    void EnableFor(const TSeries* shown);

    /// Adds a data set named after its number and selects it.
    void New();

Q_SIGNALS:
    /// The user has chosen another one.
    void Picked();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void PrepareButtons();
    void Connect(QPushButton& button, void (TDataSetList::*action)());
    void Delete();
    void Import();
    void Export();
    void Duplicate();
    void MoveToFirst();
    void Sort();
    void Reverse();
    bool ReadEveryRowOfCurrent();
    QString AskExportFile(const TSeries& series);

    TWizardContext& m_context;
    const Ui::TxyDataWizard& m_ui;
    QWidget& m_window;
};

} // namespace lumoplot
