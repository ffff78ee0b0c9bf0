// The script editor: a modal window in which lines of plain text are read or edited, and printed.
#pragma once

#include "controls/widgets_export.h"

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

namespace Ui {
class TfrmEditScript;
}

namespace lumoplot {

class TfrmEditScript : public QDialog {
    Q_OBJECT

public:
    explicit TfrmEditScript(QWidget* owner);
    ~TfrmEditScript() override;

    /// Also clears Changed.
    void SetLines(const std::vector<std::string>& lines);
    /// An empty text has no lines.
    std::vector<std::string> Lines() const;
    /// The text was edited since SetLines, whatever it is now.
    bool Changed() const { return m_changed; }

private:
    void ConnectControls();
    void ShowMenu(const QPoint& place);
    void ToggleWordWrap();
    void ChooseFont();
    void ChooseBackgroundColor();
    void Print(const QStringList& lines);
    void ShowPrintPreview();
    QString Heading() const;
    QStringList AllLines() const;
    QStringList SelectedLines() const;

    std::unique_ptr<Ui::TfrmEditScript> m_ui;
    bool m_changed = false;
};

/// Shows lines (UTF-8) for editing in a modal window over `ownerForm`. True when the user accepted them, and
/// `lines` are then the edited ones; otherwise they are left as they were, and null lines show nothing.
/// `changed` tells whether the text was edited at all while the window was open.
XYWIDGETS_EXPORT bool EditScript(QWidget* ownerForm, std::vector<std::string>* lines, const QString& title,
                                 bool* changed = nullptr);

} // namespace lumoplot
