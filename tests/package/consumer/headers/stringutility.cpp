#include <strings/StringUtility.h>

bool readMap()
{
    return StringUtility::saveableUIStringToMap(QString()).getValue().value(QString()).isNull();
}
