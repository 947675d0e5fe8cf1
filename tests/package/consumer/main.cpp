#include <commands/CommandData.h>
#include <commands/CommandQueue.h>
#include <tarnwick_version.h>

#include <string_view>

static_assert(TARNWICK_VERSION_STRING == std::string_view(PACKAGE_VERSION));
static_assert(TARNWICK_VERSION >= QT_VERSION_CHECK(1, 0, 0) && TARNWICK_VERSION < QT_VERSION_CHECK(2, 0, 0));

int main()
{
    const CommandQueue queue;
    return CommandData::RETRY_ERROR_CODE == -1 && queue.getCommands().isEmpty() ? 0 : 1;
}
