#include "dialog/frame/undo_names.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QLabel>
#include <algorithm>

namespace lumoplot {
namespace {

constexpr std::size_t kLongestName = 40; // characters of a data set's name that a step tells

using TStates = std::vector<TSeriesState>;

std::string Shortened(const std::string& name) {
    const QString text = QString::fromStdString(name).simplified();
    return (text.size() > int{kLongestName} ? text.left(kLongestName - 1) + QChar(0x2026) : text)
        .toStdString();
}

std::string Many(const char* verb, std::size_t count) {
    return std::string(verb) + " " + std::to_string(count) + " data sets";
}

/// The first data set of the longer list that the shorter one lacks at its place.
const TSeriesState& FirstMissing(const TStates& longer, const TStates& shorter) {
    for (std::size_t i = 0; i < shorter.size(); ++i)
        if (longer[i].DataStamp != shorter[i].DataStamp) return longer[i];
    return longer[shorter.size()];
}

std::string NameOfListChange(const TStates& before, const TStates& after) {
    const bool added = after.size() > before.size();
    const TStates& longer = added ? after : before;
    const TStates& shorter = added ? before : after;
    const char* verb = added ? "add" : "delete";
    if (longer.size() - shorter.size() > 1) return Many(verb, longer.size() - shorter.size());
    return std::string(verb) + " data set " + Shortened(FirstMissing(longer, shorter).Name);
}

bool IsRearranged(const TStates& before, const TStates& after) {
    bool moved = false;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (before[i].DataStamp == after[i].DataStamp) continue;
        moved = true;
        if (std::ranges::find(after, before[i].DataStamp, &TSeriesState::DataStamp) == after.end())
            return false;
    }
    return moved;
}

std::string NameOfSeriesChange(const TSeriesState& before, const TSeriesState& after,
                               const QString& caption) {
    const std::string& name = before.Name;
    if (before.Points != after.Points && !(*before.Points == *after.Points)) {
        const bool loaded = after.SourceRows.Used > 0 || after.IsThinned;
        return (loaded ? "load " : "edit points of ") + Shortened(name);
    }
    if (caption.isEmpty()) return "change " + Shortened(name);
    return "change " + caption.toStdString() + " of " + Shortened(name);
}

std::string NameOfMarkChange(const std::map<int, TGraphMark>& before,
                             const std::map<int, TGraphMark>& after) {
    if (after.empty()) return before.size() == 1 ? "delete mark" : "clear marks";
    if (after.size() != before.size()) return after.size() > before.size() ? "add mark" : "delete mark";
    return "change mark";
}

} // namespace

QString CaptionOf(const QWidget& control) {
    QString caption;
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) caption = button->text();
    if (caption.isEmpty() && control.window())
        for (const QLabel* label : control.window()->findChildren<QLabel*>())
            if (label->buddy() == &control) caption = label->text();
    if (caption.isEmpty()) caption = control.accessibleName();
    caption.remove(QLatin1Char('&'));
    while (caption.endsWith(QLatin1Char(':')) || caption.endsWith(QLatin1Char('.'))) caption.chop(1);
    return caption.trimmed();
}

std::string NameOfChange(const TGraphSnapshot& before, const TGraphSnapshot& after, const QString& caption) {
    const TStates& old = before.Series();
    const TStates& now = after.Series();
    if (old.size() != now.size()) return NameOfListChange(old, now);
    if (IsRearranged(old, now)) return "arrange data sets";
    std::size_t changed = 0;
    std::size_t last = 0;
    for (std::size_t i = 0; i < old.size(); ++i)
        if (old[i] != now[i]) last = i, ++changed;
    if (changed == 1) return NameOfSeriesChange(old[last], now[last], caption);
    if (changed > 1) return Many("change", changed);
    if (before.Marks() != after.Marks()) return NameOfMarkChange(before.Marks(), after.Marks());
    return caption.isEmpty() ? "change graph" : "change " + caption.toStdString();
}

} // namespace lumoplot
