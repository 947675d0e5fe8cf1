#include <strings/QEnumToString.h>

QString nameError()
{
    return QEnumToString::qFileDeviceError(QFileDevice::NoError);
}
