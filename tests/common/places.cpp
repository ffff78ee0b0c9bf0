#include "common/places.h"

namespace lumoplot {

std::string SourceFile(const std::string& name) {
    return LUMOPLOT_SOURCE_DIR "/" + name;
}

std::string BuiltProgram(const std::string& name) {
    return LUMOPLOT_BINARY_DIR "/bin/" + name;
}

} // namespace lumoplot
