#include "QEnumToString.h"

#include <QStringView>

#include <array>
#include <cstring>
#include <type_traits>

namespace {

// In the order of the values. Constant data, so that exit handlers of clients can use it.
constexpr std::array<QStringView, 15> fileDeviceErrorNames = {
    u"QFileDevice::NoError",
    u"QFileDevice::ReadError",
    u"QFileDevice::WriteError",
    u"QFileDevice::FatalError",
    u"QFileDevice::ResourceError",
    u"QFileDevice::OpenError",
    u"QFileDevice::AbortError",
    u"QFileDevice::TimeOutError",
    u"QFileDevice::UnspecifiedError",
    u"QFileDevice::RemoveError",
    u"QFileDevice::RenameError",
    u"QFileDevice::PositionError",
    u"QFileDevice::ResizeError",
    u"QFileDevice::PermissionsError",
    u"QFileDevice::CopyError",
};

} // namespace

QString QEnumToString::qFileDeviceError(const QFileDevice::FileError &error)
{
    // Reading a value outside the range of the enumeration as a FileError would be undefined behaviour.
    std::make_unsigned_t<std::underlying_type_t<QFileDevice::FileError>> number = 0;
    static_assert(sizeof number == sizeof error);
    std::memcpy(&number, &error, sizeof number);
    if (number >= fileDeviceErrorNames.size()) {
        return QString();
    }
    const QStringView name = fileDeviceErrorNames[number];
    return QString::fromRawData(name.data(), name.size()); // allocates nothing
}
