// The control that edits one setting. It belongs to its parent widget; what the user does goes into the
// setting at once, and what is no value for it is marked and stays out.
#pragma once

#include "dialogs/settings/setting_words.h"
#include "graph/model/bound_settings.h"

#include <QString>
#include <functional>

class QWidget;

namespace lumoplot {

struct TSettingEditor {
    QWidget* Widget = nullptr;
    /// Shows the value that the setting has now; an edit that holds no value keeps its text.
    std::function<void()> Show;
    /// The edit that holds no value; null while there is none.
    std::function<QWidget*()> Wrong = [] { return nullptr; };
};

/// What an editor edits. `Other` is the upper end of a range, whose lower end is `Setting`.
struct TEditedSetting {
    TBoundSetting Setting;
    TBoundSetting Other;
    const TSettingWords* Words = nullptr;
    /// Why a range can not be had; empty when it can.
    std::function<QString(double from, double to)> Objection;
};

/// `changed` is called after a change by the user. `name` goes into the names of the controls.
TSettingEditor MakeSettingEditor(const TEditedSetting& edited, const QString& name, QWidget* parent,
                                 std::function<void()> changed);

} // namespace lumoplot
