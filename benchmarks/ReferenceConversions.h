#ifndef TARNWICK_BENCHMARKS_REFERENCECONVERSIONS_H
#define TARNWICK_BENCHMARKS_REFERENCECONVERSIONS_H

#include <QDebug>
#include <QList>
#include <QMap>
#include <QMatrix4x4>
#include <QMessageLogger>
#include <QPointF>
#include <QRect>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <QTransform>
#include <QVector2D>
#include <QVector3D>
#include <QVersionNumber>

#include <cmath>
#include <optional>
#include <vector>

/**
 * The conversions of StringConversions as sequences of calls to Qt, which split, convert and join lists of strings. The
 * benchmarks compare the speed with them, the tests the results.
 */
namespace reference {

inline QString join(const QList<double> &values, QChar separator, char format, int precision)
{
    QStringList texts;
    for (const double value : values) {
        texts << QString::number(value, format, precision);
    }
    return texts.join(separator);
}

inline QString join(const QList<int> &values, QChar separator)
{
    QStringList texts;
    for (const int value : values) {
        texts << QString::number(value, 10);
    }
    return texts.join(separator);
}

inline float stringToFloat(const QString &text, char exponentSeparator)
{
    const QStringList fields = text.split(QChar(QLatin1Char(exponentSeparator)), Qt::KeepEmptyParts, Qt::CaseSensitive);
    const float mantissa = fields[0].toFloat();
    if (fields.size() < 2) {
        return mantissa;
    }
    return static_cast<float>(
        static_cast<double>(mantissa) * std::pow(10.0, static_cast<double>(fields[1].toInt(nullptr, 10))));
}

inline QString toString(const int *values, int count)
{
    QStringList texts;
    for (int i = 0; i < count; ++i) {
        texts << QString::number(values[i], 10);
    }
    return texts.join(u' ');
}

inline std::vector<int> stringToIntegerArray(const QString &text)
{
    const QStringList fields = text.split(u' ', Qt::KeepEmptyParts, Qt::CaseSensitive);
    std::vector<int> values;
    for (const QString &field : fields) {
        values.push_back(field.toInt(nullptr, 10));
    }
    return values;
}

inline QString qpointToString(const QPoint &point)
{
    return join({point.x(), point.y()}, u' ');
}

inline QPoint stringToQPoint(const QString &text)
{
    const QStringList fields = text.split(u' ', Qt::KeepEmptyParts, Qt::CaseSensitive);
    return fields.size() < 2 ? QPoint(0, 0) : QPoint(fields[0].toInt(nullptr, 10), fields[1].toInt(nullptr, 10));
}

inline QString qpointfToString(const QPointF &point, int precision)
{
    return join({point.x(), point.y()}, u' ', 'g', precision);
}

inline QPointF stringToQPointF(const QString &text)
{
    const QStringList fields = text.split(u' ', Qt::KeepEmptyParts, Qt::CaseSensitive);
    return fields.size() < 2 ? QPointF(0.0, 0.0) : QPointF(fields[0].toDouble(), fields[1].toDouble());
}

inline QString qpointfVectorToString(const std::vector<QPointF> &points, int precision)
{
    QStringList texts;
    for (const QPointF &point : points) {
        texts << qpointfToString(point, precision);
    }
    return texts.join(u',');
}

inline QString qSizeToString(const QSize &size)
{
    return join({size.width(), size.height()}, u' ');
}

inline QSize stringToQSize(const QString &text)
{
    const QStringList fields = text.split(u' ', Qt::KeepEmptyParts, Qt::CaseSensitive);
    return QSize(fields.first().toInt(nullptr, 10), fields.last().toInt(nullptr, 10));
}

inline QString qSizeFToString(const QSizeF &size)
{
    return join({size.width(), size.height()}, u' ', 'g', 17);
}

inline QSizeF stringToQSizeF(const QString &text)
{
    const QStringList fields = text.split(u' ', Qt::KeepEmptyParts, Qt::CaseSensitive);
    return QSizeF(fields.first().toDouble(), fields.last().toDouble());
}

inline QString rectToString(const QRect &rect)
{
    return join({rect.x(), rect.y(), rect.width(), rect.height()}, u',');
}

/** Requires that the edges are within the range of int. */
inline QRect stringToRect(const QString &text)
{
    const QStringList fields = text.split(u',', Qt::KeepEmptyParts, Qt::CaseSensitive);
    if (fields.size() < 4) {
        return QRect();
    }
    return QRect(fields[0].toInt(nullptr, 10),
        fields[1].toInt(nullptr, 10),
        fields[2].toInt(nullptr, 10),
        fields[3].toInt(nullptr, 10));
}

inline QString vector2DToString(const QVector2D &vector, int precision, bool fixed)
{
    return join({vector.x(), vector.y()}, u' ', fixed ? 'f' : 'g', precision);
}

inline QVector2D stringToVector2D(const QString &text)
{
    const QStringList fields = text.split(u' ', Qt::KeepEmptyParts, Qt::CaseSensitive);
    return fields.size() != 2 ? QVector2D() : QVector2D(fields[0].toFloat(), fields[1].toFloat());
}

inline QString vector3DToString(const QVector3D &vector, int precision, bool fixed)
{
    return join({vector.x(), vector.y(), vector.z()}, u' ', fixed ? 'f' : 'g', precision);
}

inline QVector3D stringToVector3D(const QString &text)
{
    const QStringList fields = text.split(u' ', Qt::KeepEmptyParts, Qt::CaseSensitive);
    return fields.size() != 3 ? QVector3D() : QVector3D(fields[0].toFloat(), fields[1].toFloat(), fields[2].toFloat());
}

inline QString matrix4x4ToString(const QMatrix4x4 &matrix, QChar separator)
{
    QStringList texts;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            texts << QString::number(static_cast<double>(matrix(row, column)), 'f', 17);
        }
    }
    return texts.join(separator);
}

inline std::optional<QMatrix4x4> stringToQMatrix4x4Safe(const QString &text, QChar separator)
{
    const QStringList fields = text.split(separator, Qt::KeepEmptyParts, Qt::CaseSensitive);
    if (fields.size() != 16) {
        return std::nullopt;
    }
    QMatrix4x4 matrix;
    for (int i = 0; i < 16; ++i) {
        matrix(i / 4, i % 4) = static_cast<float>(fields[i].toDouble());
    }
    return matrix;
}

inline QString transformToString(const QTransform &t)
{
    const QList<double> elements = {t.m11(), t.m12(), t.m13(), t.m21(), t.m22(), t.m23(), t.m31(), t.m32(), t.m33()};
    return join(elements, u' ', 'f', 6);
}

inline QTransform stringToQTransform(const QString &text)
{
    const QStringList fields = text.split(u' ', Qt::KeepEmptyParts, Qt::CaseSensitive);
    if (fields.size() != 9) {
        return QTransform();
    }
    const auto m = [&fields](int index) { return fields[index].toDouble(); };
    return QTransform(m(0), m(1), m(2), m(3), m(4), m(5), m(6), m(7), m(8));
}

template <typename Value, typename ToText>
QString mapToString(const QMap<QString, Value> &map, ToText toText)
{
    QString text;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        if (entry != map.cbegin()) {
            text += QStringLiteral(" | ");
        }
        text += entry.key() + QLatin1Char(' ') + toText(entry.value());
    }
    return text;
}

inline QString mapToString(const QMap<QString, QString> &map)
{
    return mapToString(map, [](const QString &value) { return value; });
}

inline QString mapToString(const QMap<QString, QVersionNumber> &map)
{
    return mapToString(map, [](const QVersionNumber &value) { return value.toString(); });
}

inline std::optional<QMap<QString, QVersionNumber>> stringToStringVersionMap(const QString &text)
{
    QMap<QString, QVersionNumber> map;
    const QStringList parts = text.split(u'|', Qt::KeepEmptyParts, Qt::CaseSensitive);
    for (const QString &part : parts) {
        const QString entry = part.trimmed();
        const qsizetype blank = entry.indexOf(u' ');
        const QString version = entry.mid(blank + 1).trimmed();
        if (blank < 0 || version.contains(u' ')) {
            return std::nullopt;
        }
        map.insert(entry.left(blank).trimmed(), QVersionNumber::fromString(version));
    }
    return map;
}

} // namespace reference

#endif
