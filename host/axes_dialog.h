// The dialog for the graph's title and its three axes. Apply shows the change in the graph and leaves the
// dialog open.
#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class AxesDialog;
}

namespace lumoplot {

class TGraphDocument;

class TAxesDialog : public QDialog {
    Q_OBJECT

public:
    TAxesDialog(TGraphDocument& document, QWidget* parent);
    ~TAxesDialog() override;

private:
    void Fill();
    /// False when a text is wrong; the user has been told and sees it.
    bool Check();
    /// False, and nothing written, when Check finds something.
    bool Apply();

    TGraphDocument& m_document;
    std::unique_ptr<Ui::AxesDialog> m_ui;
};

} // namespace lumoplot
