// Asks for the kind and the size of a picture file, beginning with what was asked for last. It writes no
// file.
#pragma once

#include <QDialog>
#include <QSize>
#include <memory>

namespace Ui {
class PictureExportDialog;
}

namespace lumoplot {

struct TPictureOptions;

class TPictureExportDialog : public QDialog {
    Q_OBJECT

public:
    /// The graph is shown with that size in units of 1/96 inch.
    TPictureExportDialog(QSize size, QWidget* parent);
    ~TPictureExportDialog() override;

    /// "png", "svg" or "pdf".
    QString Suffix() const;
    /// Width and height of the layout in units of 1/96 inch, each from 50 to 10000.
    QSize Size() const { return m_size; }
    TPictureOptions Options() const;

    void accept() override;

private:
    /// The entries of the list of sizes.
    enum TPlace { Screen, OneColumn, TwoColumns, Slide, OwnSize };

    bool IsPng() const;
    /// Pixels in an inch of a PNG picture.
    int Resolution() const;
    /// The place has a layout of its own, which is scaled to its width as a whole.
    bool IsScaled() const;
    /// What the edits show for one unit of the layout.
    double Factor() const;
    void TakePlace(int place);
    void SetWidth(double shown);
    void SetHeight(double shown);
    void ShowSize();
    void BeOwnSize();
    void Recall();

    std::unique_ptr<Ui::PictureExportDialog> m_ui;
    QSize m_shown; ///< the graph's own size
    QSize m_size;
    double m_shape;          ///< width / height while the proportions are kept
    double m_paperScale = 1; ///< how large a unit of the layout is on paper, in 1/96 inch
};

} // namespace lumoplot
