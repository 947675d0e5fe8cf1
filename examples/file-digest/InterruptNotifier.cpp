#include "InterruptNotifier.h"

#ifdef Q_OS_UNIX

#include <QSocketNotifier>

#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>

namespace {

// The ends of a pipe. A signal handler may do little more than write(); a socket notifier reports the data.
int readEnd = -1;
std::atomic<int> writeEnd = -1;
static_assert(std::atomic<int>::is_always_lock_free, "read in a signal handler");

void handleInterrupt(int)
{
    const int savedErrno = errno;
    [[maybe_unused]] const auto written = write(writeEnd, "", 1);
    errno = savedErrno;
}

} // namespace

InterruptNotifier::InterruptNotifier()
{
    int ends[2];
    if (pipe(ends) != 0) {
        return; // Ctrl+C ends the process as usual
    }
    readEnd = ends[0];
    writeEnd = ends[1];
    auto *notifier = new QSocketNotifier(readEnd, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        Q_EMIT interrupted();
    });

    struct sigaction action = {};
    action.sa_handler = handleInterrupt;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    sigaction(SIGINT, &action, nullptr);
}

InterruptNotifier::~InterruptNotifier()
{
    if (readEnd < 0) {
        return;
    }
    std::signal(SIGINT, SIG_DFL);
    close(writeEnd.exchange(-1));
    close(readEnd);
    readEnd = -1;
}

#else

InterruptNotifier::InterruptNotifier() = default;
InterruptNotifier::~InterruptNotifier() = default;

#endif
