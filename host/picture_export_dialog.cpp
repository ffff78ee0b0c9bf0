#include "host/picture_export_dialog.h"

#include "controls/return_key.h"
#include "dialogs/manual_window.h"
#include "graph/drawing/picture/drawing.h"
#include "ui_picture_export_dialog.h"

#include <QPushButton>
#include <QSettings>
#include <QSignalBlocker>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kExportUnitsInInch = 96;
constexpr double kMillimetresInInch = 25.4;
constexpr double kMillimetres = kMillimetresInInch / kExportUnitsInInch; // in a unit
constexpr int kSmallest = 50;
constexpr int kLargest = 10000;

/// A width on paper and the layout whose texts can be read at it.
struct TPaperPlace {
    double Millimetres; ///< 0 for a layout at its own size
    int LayoutWidth;
    double Shape; ///< width / height; 0 for the graph's
    int Resolution;
};
constexpr TPaperPlace kPlaces[] = {
    {0, 0, 0, 192}, {85, 480, 0, 600}, {170, 800, 0, 600}, {254, 640, 16.0 / 9, 192}, {0, 0, 0, 192}};

const QString kFormatKey = QStringLiteral("picture/format");
const QString kPlaceKey = QStringLiteral("picture/place");
const QString kUnitKey = QStringLiteral("picture/unit");
const QString kSizeKey = QStringLiteral("picture/size");
const QString kScaleKey = QStringLiteral("picture/scale");
const QString kResolutionKey = QStringLiteral("picture/resolution");
const QString kTransparentKey = QStringLiteral("picture/transparent");

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
      m_shown(Clamped(size.width()), Clamped(size.height())), m_size(m_shown), m_shape(Shape(m_size)) {
    m_ui->setupUi(this);
    CloseOnCtrlReturn(*this);
    OfferManual(*this, [] { return QStringLiteral("drawing.md"); });
    m_ui->buttons->button(QDialogButtonBox::Save)->setText(tr("&Save…"));
    Recall();
    connect(m_ui->cbx_Place, &QComboBox::currentIndexChanged, this, &TPictureExportDialog::TakePlace);
    connect(m_ui->cbx_Format, &QComboBox::currentIndexChanged, this, &TPictureExportDialog::ShowSize);
    connect(m_ui->cbx_Unit, &QComboBox::currentIndexChanged, this, &TPictureExportDialog::ShowSize);
    connect(m_ui->se_Resolution, &QSpinBox::valueChanged, this, &TPictureExportDialog::ShowSize);
    connect(m_ui->se_Width, &QDoubleSpinBox::valueChanged, this, &TPictureExportDialog::SetWidth);
    connect(m_ui->se_Height, &QDoubleSpinBox::valueChanged, this, &TPictureExportDialog::SetHeight);
    connect(m_ui->cb_KeepShape, &QCheckBox::toggled, this, [this] { m_shape = Shape(m_size); });
    ShowSize();
}

TPictureExportDialog::~TPictureExportDialog() = default;

// The graph may be shown at another size than it was then.
void TPictureExportDialog::Recall() {
    const QSettings settings;
    m_ui->cbx_Format->setCurrentIndex(std::clamp(settings.value(kFormatKey, 0).toInt(), 0, 2));
    m_ui->cbx_Unit->setCurrentIndex(std::clamp(settings.value(kUnitKey, 0).toInt(), 0, 1));
    const int place = std::clamp(settings.value(kPlaceKey, 0).toInt(), int{Screen}, int{OwnSize});
    m_ui->cbx_Place->setCurrentIndex(place);
    TakePlace(place);
    const QSize size = settings.value(kSizeKey).toSize();
    const double scale = settings.value(kScaleKey).toDouble();
    if (place != Screen && size.isValid()) m_size = {Clamped(size.width()), Clamped(size.height())};
    if (IsScaled() && scale > 0 && std::isfinite(scale)) m_paperScale = scale;
    m_shape = Shape(m_size);
    m_ui->se_Resolution->setValue(settings.value(kResolutionKey, kPlaces[place].Resolution).toInt());
    m_ui->cb_Transparent->setChecked(settings.value(kTransparentKey, false).toBool());
}

void TPictureExportDialog::accept() {
    QSettings settings;
    settings.setValue(kFormatKey, m_ui->cbx_Format->currentIndex());
    settings.setValue(kPlaceKey, m_ui->cbx_Place->currentIndex());
    settings.setValue(kUnitKey, m_ui->cbx_Unit->currentIndex());
    settings.setValue(kSizeKey, m_size);
    settings.setValue(kScaleKey, m_paperScale);
    settings.setValue(kResolutionKey, Resolution());
    settings.setValue(kTransparentKey, m_ui->cb_Transparent->isChecked());
    QDialog::accept();
}

QString TPictureExportDialog::Suffix() const {
    return QStringList{QStringLiteral("png"), QStringLiteral("svg"), QStringLiteral("pdf")}.value(
        m_ui->cbx_Format->currentIndex());
}

TPictureOptions TPictureExportDialog::Options() const {
    TPictureOptions options;
    options.PaperScale = m_paperScale;
    options.PixelsPerUnit = Resolution() / kExportUnitsInInch * m_paperScale;
    if (m_ui->cb_Transparent->isChecked()) options.Background = TBackground::LeaveOut;
    return options;
}

int TPictureExportDialog::Resolution() const {
    return m_ui->se_Resolution->value();
}

bool TPictureExportDialog::IsPng() const {
    return m_ui->cbx_Format->currentIndex() == 0;
}

bool TPictureExportDialog::IsScaled() const {
    return kPlaces[m_ui->cbx_Place->currentIndex()].Millimetres > 0;
}

double TPictureExportDialog::Factor() const {
    if (m_ui->cbx_Unit->currentIndex() == 0) return kMillimetres * m_paperScale;
    return (IsPng() ? Resolution() / kExportUnitsInInch : 1) * m_paperScale;
}

void TPictureExportDialog::TakePlace(int index) {
    const TPaperPlace& place = kPlaces[index];
    if (index != OwnSize) {
        const double shape = place.Shape > 0 ? place.Shape : Shape(m_shown);
        m_size = m_shown;
        if (place.LayoutWidth > 0) m_size = {place.LayoutWidth, Clamped(place.LayoutWidth / shape)};
        const QSignalBlocker quiet(m_ui->se_Resolution);
        m_ui->se_Resolution->setValue(place.Resolution);
    }
    m_paperScale = IsScaled() ? place.Millimetres / (m_size.width() * kMillimetres) : 1;
    m_shape = Shape(m_size);
    ShowSize();
}

void TPictureExportDialog::BeOwnSize() {
    const QSignalBlocker quiet(m_ui->cbx_Place);
    m_ui->cbx_Place->setCurrentIndex(OwnSize);
}

void TPictureExportDialog::SetWidth(double shown) {
    if (IsScaled()) {
        m_paperScale *= shown / (m_size.width() * Factor());
    } else {
        BeOwnSize();
        m_size.setWidth(Clamped(shown / Factor()));
        if (m_ui->cb_KeepShape->isChecked()) m_size.setHeight(Clamped(m_size.width() / m_shape));
    }
    ShowSize();
}

void TPictureExportDialog::SetHeight(double shown) {
    const bool keepsShape = m_ui->cb_KeepShape->isChecked();
    if (IsScaled() && keepsShape) {
        m_paperScale *= shown / (m_size.height() * Factor());
    } else {
        if (!IsScaled()) BeOwnSize();
        m_size.setHeight(Clamped(shown / Factor()));
        if (keepsShape) m_size.setWidth(Clamped(m_size.height() * m_shape));
    }
    ShowSize();
}

void TPictureExportDialog::ShowSize() {
    const int decimals = m_ui->cbx_Unit->currentIndex() == 0 ? 1 : 0;
    m_ui->se_Resolution->setEnabled(IsPng());
    ShowLength(*m_ui->se_Width, m_size.width(), Factor(), decimals);
    ShowLength(*m_ui->se_Height, m_size.height(), Factor(), decimals);
    const double pixels = Resolution() / kExportUnitsInInch * m_paperScale;
    const double millimetres = kMillimetres * m_paperScale;
    const QString paper = tr("%1 × %2 mm")
                              .arg(m_size.width() * millimetres, 0, 'f', 1)
                              .arg(m_size.height() * millimetres, 0, 'f', 1);
    QString text = IsPng() ? tr("%1 × %2 pixels, %3")
                                 .arg(qRound(m_size.width() * pixels))
                                 .arg(qRound(m_size.height() * pixels))
                                 .arg(paper)
                           : paper;
    if (IsScaled()) text += tr("; texts at %L1 % of their size").arg(qRound(m_paperScale * 100));
    m_ui->l_Size->setText(text);
}

} // namespace lumoplot
