#include <strings/QEnumToString.h>

#include <QTest>

#include <cstdlib>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

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

// Runs before the library is initialised, so that the handler runs after the library's own exit handlers. atexit()
// would tie the handler to this program, which ends before the library.
[[gnu::section(".preinit_array"), gnu::used]] void (*const beforeInitialisation)() = [] {
    on_exit(&checkName, nullptr);
};
#endif

} // namespace

class QEnumToStringTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void qFileDeviceError()
    {
        const auto name = [](int error) { return QEnumToString::qFileDeviceError(QFileDevice::FileError(error)); };
        QCOMPARE(name(QFileDevice::NoError), u"QFileDevice::NoError"_s);
        QCOMPARE(name(QFileDevice::ReadError), u"QFileDevice::ReadError"_s);
        QCOMPARE(name(QFileDevice::WriteError), u"QFileDevice::WriteError"_s);
        QCOMPARE(name(QFileDevice::FatalError), u"QFileDevice::FatalError"_s);
        QCOMPARE(name(QFileDevice::ResourceError), u"QFileDevice::ResourceError"_s);
        QCOMPARE(name(QFileDevice::OpenError), u"QFileDevice::OpenError"_s);
        QCOMPARE(name(QFileDevice::AbortError), u"QFileDevice::AbortError"_s);
        QCOMPARE(name(QFileDevice::TimeOutError), u"QFileDevice::TimeOutError"_s);
        QCOMPARE(name(QFileDevice::UnspecifiedError), u"QFileDevice::UnspecifiedError"_s);
        QCOMPARE(name(QFileDevice::RemoveError), u"QFileDevice::RemoveError"_s);
        QCOMPARE(name(QFileDevice::RenameError), u"QFileDevice::RenameError"_s);
        QCOMPARE(name(QFileDevice::PositionError), u"QFileDevice::PositionError"_s);
        QCOMPARE(name(QFileDevice::ResizeError), u"QFileDevice::ResizeError"_s);
        QCOMPARE(name(QFileDevice::PermissionsError), u"QFileDevice::PermissionsError"_s);
        QCOMPARE(name(QFileDevice::CopyError), u"QFileDevice::CopyError"_s);
        QCOMPARE(name(15), QString());
        QCOMPARE(name(15).isNull(), true);
        QCOMPARE(name(-1), QString());
    }
};

QTEST_GUILESS_MAIN(QEnumToStringTest)
#include "tst_qenumtostring.moc"
