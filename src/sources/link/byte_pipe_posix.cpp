#if !defined(_WIN32)
#include "sources/link/byte_pipe.h"
#include "support/errors.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lumoplot {
namespace {

[[noreturn]] void ThrowPipeError(const std::string& name) {
    throw EFileError("Can not read " + (name.empty() ? "the standard input" : "pipe " + name) + ": " +
                     std::strerror(errno));
}

} // namespace

bool IsPipe(const std::string& name) {
    struct stat status {};
    return stat(name.c_str(), &status) == 0 && S_ISFIFO(status.st_mode);
}

TBytePipe::TBytePipe(const std::string& name) : m_name(name), m_descriptor(STDIN_FILENO), m_hadWriter(true) {
    if (name.empty()) return;
    if (!IsPipe(name)) throw EFileError("There is no pipe " + name);
    m_descriptor = open(name.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (m_descriptor < 0) ThrowPipeError(name);
    m_isOwn = true;
    m_hadWriter = false;
}

TBytePipe::~TBytePipe() {
    if (m_isOwn) close(m_descriptor);
}

// A pipe that nobody has opened for writing yet reads as one that has ended.
std::optional<std::size_t> TBytePipe::Read(char* bytes, std::size_t capacity) {
    pollfd wanted{m_descriptor, POLLIN, 0};
    const int ready = poll(&wanted, 1, 0);
    if (ready < 0 && errno != EINTR) ThrowPipeError(m_name);
    if (ready <= 0) return 0;
    const ssize_t count = read(m_descriptor, bytes, capacity);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return 0;
    if (count < 0) ThrowPipeError(m_name);
    if (count == 0) return m_hadWriter ? std::nullopt : std::optional<std::size_t>(0);
    m_hadWriter = true;
    return static_cast<std::size_t>(count);
}

} // namespace lumoplot
#endif
