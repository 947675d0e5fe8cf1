#include <strings/QEnumToString.h>

#include <QTest>

#include <cstdlib>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

/** Asks for a name while this program's static objects are made, and again while they are destroyed. */
struct EarlyAndLateClient
{
    ~EarlyAndLateClient()
    {
        if (QEnumToString::qFileDeviceError(QFileDevice::CopyError) != early) {
            std::_Exit(EXIT_FAILURE);
        }
    }

    const QString early = QEnumToString::qFileDeviceError(QFileDevice::CopyError);
};

const EarlyAndLateClient client;

#ifdef __GLIBC__
void checkName(int, void *)
{
    for (std::size_t size = 16; size < 1024; size += 8) {
        std::memset(std::malloc(size), 0x55, size); // overwrites what has been freed
    }
    if (QEnumToString::qFileDeviceError(QFileDevice::CopyError) != u"QFileDevice::CopyError") {
        std::_Exit(EXIT_FAILURE);
    }
}

/** Runs before the library is initialised, so that the handler runs after the library's own exit handlers. */
void registerLastExitHandler()
{
    on_exit(&checkName, nullptr); // atexit() would tie the handler to this program, which ends before the library
}

[[gnu::section(".preinit_array"), gnu::used]] void (*const beforeInitialisation)() = &registerLastExitHandler;
#endif

} // namespace

class QEnumToStringTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesInOrderOfTheirValues()
    {
        QCOMPARE(client.early, u"QFileDevice::CopyError"_s);
        const auto names = u"NoError ReadError WriteError FatalError ResourceError OpenError AbortError TimeOutError "
                           "UnspecifiedError RemoveError RenameError PositionError ResizeError PermissionsError "
                           "CopyError"_s.split(u' ');
        for (int i = 0; i < names.size(); ++i) {
            QCOMPARE(QEnumToString::qFileDeviceError(QFileDevice::FileError(i)), u"QFileDevice::"_s + names.at(i));
        }
        for (const int beyond : {15, -1}) {
            QVERIFY(QEnumToString::qFileDeviceError(QFileDevice::FileError(beyond)).isNull());
        }
    }
};

QTEST_GUILESS_MAIN(QEnumToStringTest)
#include "tst_qenumtostring.moc"
