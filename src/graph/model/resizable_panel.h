// The panel that a graph is: a widget with a size of its own that may lie inside another one.
#pragma once

#include "support/export.h"

#include <QWidget>

namespace lumoplot {

class XYGRAPH_EXPORT TReSizablePanel : public QWidget {
    Q_OBJECT

public:
    explicit TReSizablePanel(QWidget* parent = nullptr) : QWidget(parent) {}
};

} // namespace lumoplot
