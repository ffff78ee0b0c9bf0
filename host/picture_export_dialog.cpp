#include "host/picture_export_dialog.h"

#include "ui_picture_export_dialog.h"

#include <QPushButton>
#include <QSignalBlocker>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kExportUnitsInInch = 96;
constexpr double kMillimetresInInch = 25.4;
constexpr int kSmallest = 50;
constexpr int kLargest = 10000;

int Clamped(double length) {
    return static_cast<int>(std::lround(std::clamp<double>(length, kSmallest, kLargest)));
}

double Shape(QSize size) {
    return static_cast<double>(size.width()) / size.height();
}

void ShowLength(QDoubleSpinBox& edit, int length, double factor, int decimals) {
    const QSignalBlocker blocker(edit);
    edit.setDecimals(decimals);
    edit.setRange(kSmallest * factor, kLargest * factor);
    edit.setValue(length * factor);
}

} // namespace

TPictureExportDialog::TPictureExportDialog(QSize size, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::PictureExportDialog>()),
      m_size(Clamped(size.width()), Clamped(size.height())), m_shape(Shape(m_size)) {
    m_ui->setupUi(this);
    m_ui->buttons->button(QDialogButtonBox::Save)->setText(tr("&Save…"));
    connect(m_ui->cbx_Format, &QComboBox::currentIndexChanged, this, &TPictureExportDialog::ShowSize);
    connect(m_ui->cbx_Unit, &QComboBox::currentIndexChanged, this, &TPictureExportDialog::ShowSize);
    connect(m_ui->se_Resolution, &QSpinBox::valueChanged, this, &TPictureExportDialog::ShowSize);
    connect(m_ui->se_Width, &QDoubleSpinBox::valueChanged, this, &TPictureExportDialog::SetWidth);
    connect(m_ui->se_Height, &QDoubleSpinBox::valueChanged, this, &TPictureExportDialog::SetHeight);
    connect(m_ui->cb_KeepShape, &QCheckBox::toggled, this, [this] { m_shape = Shape(m_size); });
    ShowSize();
}

TPictureExportDialog::~TPictureExportDialog() = default;

QString TPictureExportDialog::Suffix() const {
    return QStringList{QStringLiteral("png"), QStringLiteral("svg"), QStringLiteral("pdf")}.value(
        m_ui->cbx_Format->currentIndex());
}

int TPictureExportDialog::Resolution() const {
    return m_ui->se_Resolution->value();
}

bool TPictureExportDialog::IsPng() const {
    return m_ui->cbx_Format->currentIndex() == 0;
}

double TPictureExportDialog::Factor() const {
    if (m_ui->cbx_Unit->currentIndex() == 0) return kMillimetresInInch / kExportUnitsInInch;
    return IsPng() ? Resolution() / kExportUnitsInInch : 1;
}

void TPictureExportDialog::SetWidth(double shown) {
    m_size.setWidth(Clamped(shown / Factor()));
    if (m_ui->cb_KeepShape->isChecked()) m_size.setHeight(Clamped(m_size.width() / m_shape));
    ShowSize();
}

void TPictureExportDialog::SetHeight(double shown) {
    m_size.setHeight(Clamped(shown / Factor()));
    if (m_ui->cb_KeepShape->isChecked()) m_size.setWidth(Clamped(m_size.height() * m_shape));
    ShowSize();
}

void TPictureExportDialog::ShowSize() {
    const int decimals = m_ui->cbx_Unit->currentIndex() == 0 ? 1 : 0;
    m_ui->se_Resolution->setEnabled(IsPng());
    ShowLength(*m_ui->se_Width, m_size.width(), Factor(), decimals);
    ShowLength(*m_ui->se_Height, m_size.height(), Factor(), decimals);
    const double pixels = Resolution() / kExportUnitsInInch;
    const double millimetres = kMillimetresInInch / kExportUnitsInInch;
    const QString paper = tr("%1 × %2 mm")
                              .arg(m_size.width() * millimetres, 0, 'f', 1)
                              .arg(m_size.height() * millimetres, 0, 'f', 1);
    m_ui->l_Size->setText(IsPng() ? tr("%1 × %2 pixels, %3")
                                        .arg(qRound(m_size.width() * pixels))
                                        .arg(qRound(m_size.height() * pixels))
                                        .arg(paper)
                                  : paper);
}

} // namespace lumoplot
