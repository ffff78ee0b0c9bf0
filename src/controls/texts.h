// The texts of windows that are made outside of a Q_OBJECT class, in the language of the program.
#pragma once

#include <QCoreApplication>

namespace lumoplot {

/// TTexts::tr("…") is what tr("…") is inside of a window.
class TTexts {
    Q_DECLARE_TR_FUNCTIONS(lumoplot::TTexts)
};

} // namespace lumoplot
