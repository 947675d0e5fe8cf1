#include <conversions/StringConversions.h>

using S = StringConversions;

std::vector<QString> convertEach()
{
    return {
        S::integerArrayToString(std::vector<int>()),
        S::qkeySequencesToAppendableString(QList<QKeySequence>()),
        S::qpointToString(QPoint()),
        S::qpointfVectorToString(std::vector<QPointF>()),
        S::qSizeToString(QSize()),
        S::qSizeFToString(QSizeF()),
        S::rectToString(QRect()),
        S::vector2DToString(QVector2D()),
        S::vector3DToString(QVector3D()),
        S::matrix4x4ToString(QMatrix4x4(), QChar()),
        S::transformToString(QTransform()),
        S::mapToString(QMap<QString, QVersionNumber>()),
        S::mapToString(S::stringToStringVersionMap(QString()).getValue()),
    };
}
