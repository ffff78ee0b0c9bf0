#include "common/places.h"

namespace lumoplot {

std::string SourceFile(const std::string& name) {
    return LUMOPLOT_SOURCE_DIR "/" + name;
}

std::string BuiltProgram(const std::string& name) {
#if defined(_WIN32)
    return LUMOPLOT_BINARY_DIR "/bin/" + name + ".exe";
#else
    return LUMOPLOT_BINARY_DIR "/bin/" + name;
#endif
}

} // namespace lumoplot
