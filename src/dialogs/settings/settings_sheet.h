// One page of settings: a heading and a row for each setting. Rows can be searched for by their words.
#pragma once

#include "dialogs/settings/setting_editor.h"

#include <QStringList>
#include <QWidget>
#include <vector>

class QFormLayout;
class QLabel;

namespace lumoplot {

class TSettingsSheet : public QWidget {
    Q_OBJECT

public:
    TSettingsSheet(const QString& title, QWidget* parent);

    const QString& Title() const { return m_title; }
    /// A row for each of the words. `section` goes into the names of the controls.
    void Add(const std::vector<TBoundSetting>& settings, std::span<const TSettingWords> words,
             const QString& section);
    /// A row of its own; `words` are what it is found by beside its label.
    void AddRow(const QString& label, const TSettingEditor& editor, const QString& words,
                const QString& section = {});
    /// Controls that belong to no setting; they are not there while something is searched for.
    void AddControls(QWidget* controls);
    /// Why the range that a Range row asks for can not be had.
    void SetObjection(std::function<QString(double from, double to)> objection) {
        m_objection = std::move(objection);
    }

    /// Lets the rows of a section be edited or not.
    void EnableSection(const QString& section, bool isEnabled);
    /// Shows all values anew.
    void ShowValues();
    /// Shows the rows that have each of the words, all for none; false when no row is left.
    bool Find(const QStringList& words);
    /// The first row's control that is shown; null when none is.
    QWidget* FirstShown() const;
    /// An edit that holds no value for its setting; null while all do.
    QWidget* Wrong() const;

Q_SIGNALS:
    /// The user has changed a setting.
    void Changed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct TRow {
        QString Words;
        QString Section;
        QLabel* Label; ///< null for a switch, which has its own
        TSettingEditor Editor;
    };

    void KeepWheelOff(QWidget& control);

    QString m_title;
    QFormLayout* m_form;
    std::vector<TRow> m_rows;
    std::vector<QWidget*> m_controls;
    std::function<QString(double, double)> m_objection;
};

} // namespace lumoplot
