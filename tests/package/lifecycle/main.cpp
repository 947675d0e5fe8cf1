// The library in a process that loads it with a plugin, unloads that, and leaves workers behind.
// usage: lifecycle CLIENT loading|asleep|executing   the latter two: a worker is destroyed in that state

#include <QLibrary>

#include <cstdlib>
#include <string_view>

int main(int, char **argv)
{
    constexpr int rounds = 3;
    const std::string_view state = argv[2];
    for (int round = 1; round <= rounds; ++round) {
        QLibrary client(QString::fromLocal8Bit(argv[1]));
        if (round == rounds) {
            // Otherwise newer versions of Qt unload the client while the process ends and its command still runs.
            client.setLoadHints(QLibrary::PreventUnloadHint);
        }
        const auto leaveWorker = reinterpret_cast<void (*)(bool, bool)>(client.resolve("leaveWorker"));
        leaveWorker(state == "executing" || (state == "loading" && round == rounds), state != "loading");
        if (round < rounds && !client.unload()) {
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS; // with two workers asleep, one at work, and the client still loaded
}
