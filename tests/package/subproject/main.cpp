#include <commands/CommandScheduler.h>
#include <tarnwick/commands/CommandScheduler.h>
#include <tarnwick/tarnwick_version.h>

int main()
{
    const CommandScheduler scheduler;
    return TARNWICK_VERSION_MAJOR == 1 ? 0 : 1;
}
