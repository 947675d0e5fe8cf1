#include "EscapedPath.h"

using namespace Qt::StringLiterals;

QString escapedPath(QString path)
{
    return path.replace(u'\\', "\\\\"_L1).replace(u'\n', "\\n"_L1).replace(u'\r', "\\r"_L1);
}
