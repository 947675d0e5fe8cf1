#include <numerics/BaseConverter.h>

QString convert()
{
    return BaseConverter::getHexToDecimalConverter().convert(QString(1, u'f'));
}
