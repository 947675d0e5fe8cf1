#include <strings/Translation.h>

QString translate()
{
    return strings::tr(QString(), QString());
}
