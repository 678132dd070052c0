#include "platform/linux/process/PipeWriter.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace brimwick {

PipeWriter::PipeWriter(int pipe, int stopDescriptor) : pipe_(pipe), stopDescriptor_(stopDescriptor) {
    sigset_t brokenPipe;
    sigemptyset(&brokenPipe);
    sigaddset(&brokenPipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
    fcntl(pipe_, F_SETFL, fcntl(pipe_, F_GETFL) | O_NONBLOCK);
}

bool PipeWriter::write(std::string_view bytes) const {
    while (!bytes.empty()) {
        if (!waitForRoom()) return false;
        const ssize_t written = ::write(pipe_, bytes.data(), bytes.size());
        if (written < 0 && errno != EAGAIN && errno != EINTR) return false;
        if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool PipeWriter::waitForRoom() const {
    std::array<pollfd, 2> descriptors{{{pipe_, POLLOUT, 0}, {stopDescriptor_, POLLIN, 0}}};
    while (poll(descriptors.data(), descriptors.size(), -1) < 0)
        if (errno != EINTR) return false;
    return descriptors[1].revents == 0;
}

} // namespace brimwick
