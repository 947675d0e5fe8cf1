#include <qtextensions/JsonCompare.h>

bool compareDocuments()
{
    return json::compare(QJsonDocument(), QJsonDocument());
}
