// Asks what a data set is to follow, and how much of it is kept. It chooses only; who shows it starts the
// link.
#pragma once

#include "controls/widgets_export.h"
#include "data/series/ds_info.h"

#include <QDialog>
#include <memory>

namespace Ui {
class TLinkDialog;
}

namespace lumoplot {

struct TLinkPlace;

class TLinkDialog : public QDialog {
    Q_OBJECT

public:
    /// Starts with what `current` follows where it is a link, else with a file.
    XYWIDGETS_EXPORT explicit TLinkDialog(const TDSInfo& current, QWidget* parent = nullptr);
    XYWIDGETS_EXPORT ~TLinkDialog() override;

    /// The description: that which it began with, of what was chosen.
    XYWIDGETS_EXPORT TDSInfo Source() const;

    void accept() override;

private:
    void Fill(const TDSInfo& current);
    void ShowKind();
    void ShowKeep();
    void Browse();
    TLinkPlace Place() const;
    TLinkLimit Limit() const;

    std::unique_ptr<Ui::TLinkDialog> m_ui;
    TDSInfo m_source;
};

} // namespace lumoplot
