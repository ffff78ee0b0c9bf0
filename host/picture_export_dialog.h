// Asks for the kind and the size of a picture file. It writes no file.
#pragma once

#include <QDialog>
#include <QSize>
#include <memory>

namespace Ui {
class PictureExportDialog;
}

namespace lumoplot {

class TPictureExportDialog : public QDialog {
    Q_OBJECT

public:
    /// Starts with that size in units of 1/96 inch.
    TPictureExportDialog(QSize size, QWidget* parent);
    ~TPictureExportDialog() override;

    /// "png", "svg" or "pdf".
    QString Suffix() const;
    /// Width and height in units of 1/96 inch, each from 50 to 10000.
    QSize Size() const { return m_size; }
    /// Pixels in an inch of a PNG picture.
    int Resolution() const;

private:
    bool IsPng() const;
    /// What the edits show for one unit of 1/96 inch.
    double Factor() const;
    void SetWidth(double shown);
    void SetHeight(double shown);
    void ShowSize();

    std::unique_ptr<Ui::PictureExportDialog> m_ui;
    QSize m_size;
    double m_shape; ///< width / height while the proportions are kept
};

} // namespace lumoplot
