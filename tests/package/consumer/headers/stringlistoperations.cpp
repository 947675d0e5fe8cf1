#include <strings/StringListOperations.h>

QList<QString> subtractLists()
{
    return StringListOperations::subtract(QList<QString>(), QList<QString>());
}
