#include "controls/whole_captions.h"

#include <QAbstractItemModel>
#include <QHeaderView>
#include <QStyle>
#include <algorithm>

namespace lumoplot {
namespace {

void TakeCaptions(QHeaderView& header) {
    const int margin = header.style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, &header);
    int widest = 0;
    for (int column = 0; column < header.count(); ++column) {
        const QString caption = header.model()->headerData(column, header.orientation()).toString();
        widest = std::max(widest, header.fontMetrics().horizontalAdvance(caption));
    }
    header.setMinimumSectionSize(widest + 2 * margin + 4);
}

} // namespace

void KeepCaptionsWhole(QHeaderView& header) {
    TakeCaptions(header);
    QObject::connect(header.model(), &QAbstractItemModel::headerDataChanged, &header,
                     [&header] { TakeCaptions(header); });
}

} // namespace lumoplot
