// A plugin that uses the library; main.cpp loads and unloads it.

#include "../../support/TestCommand.h"

#include <commands/CommandQueueThread.h>
#include <logging/CategoriesRegistry.h>
#include <numerics/BaseConverter.h>

#include <QSemaphore>

using namespace Qt::StringLiterals;

namespace {

// Uses what the library creates at the first call; lives from the loading of this plugin to its end.
class EarlyAndLate
{
public:
    EarlyAndLate() { use(); }
    ~EarlyAndLate() { use(); }

private:
    static void use()
    {
        logging::CategoriesRegistry &registry = logging::CategoriesRegistrySingleton::getInstance();
        registry.insertCategory(u"client"_s);
        if (registry.getCategories().last() != u"client"
            || BaseConverter::getHexToDecimalConverter().convert(u"ff"_s) != u"255") {
            std::_Exit(EXIT_FAILURE);
        }
    }
};

const EarlyAndLate earlyAndLate;

void expectFatal(QtMsgType, const QMessageLogContext &, const QString &text)
{
    std::_Exit(text == u"QThread: Destroyed while thread is still running" ? EXIT_SUCCESS : EXIT_FAILURE);
}

} // namespace

// Ends one worker properly and leaves another behind: destroyed while it runs, or never.
extern "C" Q_DECL_EXPORT void leaveWorker(bool executing, bool destroyed)
{
    static TestData data(u"A"_s);
    QSemaphore arrived;
    const auto addCommand = [&](CommandQueueThread &thread, bool indefinitely) {
        CommandQueue &queue = thread.getCommandQueue();
        queue.addCommand(QSharedPointer<TestCommand>::create(&data, [&queue, &arrived, indefinitely](TestCommand &) {
            arrived.release();
            while (indefinitely) {
                queue.isProcessing();
            }
        }));
        thread.start();
        arrived.acquire();
    };
    {
        CommandQueueThread thread;
        addCommand(thread, false);
        thread.stop();
        thread.wait();
    }
    auto thread = std::make_unique<CommandQueueThread>();
    if (executing) {
        addCommand(*thread, true);
    } else {
        thread->start();
    }
    if (destroyed) {
        qInstallMessageHandler(&expectFatal);
        thread.reset();
        std::_Exit(EXIT_FAILURE);
    }
    thread.release();
}
