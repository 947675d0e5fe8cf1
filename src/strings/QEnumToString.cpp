#include "QEnumToString.h"

#include <QHash>

#include <cstring>
#include <type_traits>

using namespace Qt::StringLiterals;

namespace QEnumToString {

namespace {

using FileErrorNumber = std::underlying_type_t<QFileDevice::FileError>;

// Filled while the library is loaded, which is before any code of a client runs.
const QHash<FileErrorNumber, QString> fileDeviceErrorNames = {
    {QFileDevice::NoError, u"QFileDevice::NoError"_s},
    {QFileDevice::ReadError, u"QFileDevice::ReadError"_s},
    {QFileDevice::WriteError, u"QFileDevice::WriteError"_s},
    {QFileDevice::FatalError, u"QFileDevice::FatalError"_s},
    {QFileDevice::ResourceError, u"QFileDevice::ResourceError"_s},
    {QFileDevice::OpenError, u"QFileDevice::OpenError"_s},
    {QFileDevice::AbortError, u"QFileDevice::AbortError"_s},
    {QFileDevice::TimeOutError, u"QFileDevice::TimeOutError"_s},
    {QFileDevice::UnspecifiedError, u"QFileDevice::UnspecifiedError"_s},
    {QFileDevice::RemoveError, u"QFileDevice::RemoveError"_s},
    {QFileDevice::RenameError, u"QFileDevice::RenameError"_s},
    {QFileDevice::PositionError, u"QFileDevice::PositionError"_s},
    {QFileDevice::ResizeError, u"QFileDevice::ResizeError"_s},
    {QFileDevice::PermissionsError, u"QFileDevice::PermissionsError"_s},
    {QFileDevice::CopyError, u"QFileDevice::CopyError"_s},
};

} // namespace

QString qFileDeviceError(const QFileDevice::FileError &error)
{
    // Copied byte by byte: the language does not let a value beyond the enumeration's range be read as a FileError.
    FileErrorNumber number = 0;
    std::memcpy(&number, &error, sizeof(number));
    return fileDeviceErrorNames.value(number);
}

} // namespace QEnumToString
