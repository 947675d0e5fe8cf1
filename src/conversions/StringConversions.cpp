#include "StringConversions.h"

#include "Fields_p.h"
#include "NumberReader_p.h"
#include "TextWriter_p.h"

#include <QDebug>
#include <QLatin1Char>
#include <QMessageLogger>
#include <QStringTokenizer>
#include <QStringView>
#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr char general = 'g';
constexpr char decimals = 'f';

QString joinIntegers(const int *values, qsizetype count, char16_t separator)
{
    TextWriter writer;
    for (qsizetype i = 0; i < count; ++i) {
        if (i > 0) {
            writer.append(separator);
        }
        writer.appendInteger(values[i]);
    }
    return writer.take();
}

QString joinIntegers(std::initializer_list<int> values, char16_t separator)
{
    return joinIntegers(values.begin(), static_cast<qsizetype>(values.size()), separator);
}

void appendReals(TextWriter &writer, std::initializer_list<double> values, QChar separator, char format, int precision)
{
    bool isFirst = true;
    for (const double value : values) {
        if (!isFirst) {
            writer.append(separator.unicode());
        }
        isFirst = false;
        writer.appendReal(value, format, precision);
    }
}

QString joinReals(std::initializer_list<double> values, char format, int precision)
{
    TextWriter writer;
    appendReals(writer, values, u' ', format, precision);
    return writer.take();
}

// Returns start + length - 1, clamped to the range of int.
int farEdge(int start, int length)
{
    const qint64 edge = static_cast<qint64>(start) + length - 1;
    const auto [least, greatest] =
        std::pair<qint64, qint64>(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    return static_cast<int>(std::clamp(edge, least, greatest));
}

void appendVersion(TextWriter &writer, const QVersionNumber &version)
{
    for (qsizetype i = 0; i < version.segmentCount(); ++i) {
        if (i > 0) {
            writer.append(u'.');
        }
        writer.appendInteger(version.segmentAt(i));
    }
}

template <typename Value, typename AppendValue>
QString joinMap(const QMap<QString, Value> &map, AppendValue appendValue)
{
    TextWriter writer;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        if (entry != map.cbegin()) {
            writer.append(QStringView(u" | "));
        }
        writer.append(QStringView(entry.key()));
        writer.append(u' ');
        appendValue(writer, entry.value());
    }
    return writer.take();
}

} // namespace

QString StringConversions::boolToString(bool value)
{
    return value ? u"true"_s : u"false"_s;
}

bool StringConversions::stringToBool(const QString &text)
{
    return QStringView(text).compare(u"true", Qt::CaseInsensitive) == 0
        || QStringView(text).compare(u"1", Qt::CaseInsensitive) == 0;
}

QString StringConversions::intToString(int value)
{
    return QString::number(value, 10);
}

int StringConversions::stringToInt(const QString &text, int defaultValue)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber, 10);
    return isNumber ? number : defaultValue;
}

float StringConversions::stringToFloat(const QString &text, char exponentSeparator)
{
    const Fields<2> fields(text, QLatin1Char(exponentSeparator));
    const float mantissa = NumberReader::readFloat(fields[0]);
    if (fields.count() == 1) {
        return mantissa;
    }
    const int exponent = NumberReader::readInt(fields[1]);
    return static_cast<float>(static_cast<double>(mantissa) * std::pow(10.0, static_cast<double>(exponent)));
}

QString StringConversions::integerArrayToString(const std::vector<int> &values)
{
    return toString(values.data(), static_cast<int>(values.size()));
}

std::vector<int> StringConversions::stringToIntegerArray(const QString &text)
{
    std::vector<int> values;
    values.reserve(static_cast<std::size_t>(text.count(u' ')) + 1);
    const QChar *const end = text.cend();
    const QChar *position = text.cbegin();
    values.push_back(NumberReader::readIntUpTo(u' ', position, end));
    while (position != end) {
        ++position;
        values.push_back(NumberReader::readIntUpTo(u' ', position, end));
    }
    return values;
}

QString StringConversions::toString(const int *values, int count)
{
    return joinIntegers(values, count, u' ');
}

QString StringConversions::ptrToString(const void *pointer)
{
    return u"0x%1"_s.arg(static_cast<quint64>(reinterpret_cast<quintptr>(pointer)), 16, 16, QChar(u'0'));
}

QString StringConversions::qkeySequencesToAppendableString(const QList<QKeySequence> &sequences)
{
    if (sequences.isEmpty()) {
        return u""_s;
    }
    return u" (%1)"_s.arg(sequences.first().toString(QKeySequence::NativeText));
}

QString StringConversions::qpointToString(const QPoint &point)
{
    return joinIntegers({point.x(), point.y()}, u' ');
}

QPoint StringConversions::stringToQPoint(const QString &text)
{
    const Fields<2> fields(text, u' ');
    if (fields.count() < 2) {
        return QPoint();
    }
    return QPoint(NumberReader::readInt(fields[0]), NumberReader::readInt(fields[1]));
}

QString StringConversions::qpointfToString(const QPointF &point, int precision)
{
    return joinReals({point.x(), point.y()}, general, precision);
}

QPointF StringConversions::stringToQPointF(const QString &text)
{
    const Fields<2> fields(text, u' ');
    if (fields.count() < 2) {
        return QPointF();
    }
    return QPointF(NumberReader::readDouble(fields[0]), NumberReader::readDouble(fields[1]));
}

QString StringConversions::qpointfVectorToString(const std::vector<QPointF> &points, int precision)
{
    TextWriter writer;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i > 0) {
            writer.append(u',');
        }
        appendReals(writer, {points[i].x(), points[i].y()}, u' ', general, precision);
    }
    return writer.take();
}

QString StringConversions::qSizeToString(const QSize &size)
{
    return joinIntegers({size.width(), size.height()}, u' ');
}

QSize StringConversions::stringToQSize(const QString &text)
{
    return QSize(NumberReader::readInt(firstField(text, u' ')), NumberReader::readInt(lastField(text, u' ')));
}

QString StringConversions::qSizeFToString(const QSizeF &size)
{
    return joinReals({size.width(), size.height()}, general, 17);
}

QSizeF StringConversions::stringToQSizeF(const QString &text)
{
    return QSizeF(NumberReader::readDouble(firstField(text, u' ')), NumberReader::readDouble(lastField(text, u' ')));
}

QString StringConversions::rectToString(const QRect &rect)
{
    return joinIntegers({rect.x(), rect.y(), rect.width(), rect.height()}, u',');
}

QRect StringConversions::stringToRect(const QString &text)
{
    const Fields<4> fields(text, u',');
    if (fields.count() < 4) {
        return QRect();
    }
    const QPoint topLeft(NumberReader::readInt(fields[0]), NumberReader::readInt(fields[1]));
    const int right = farEdge(topLeft.x(), NumberReader::readInt(fields[2]));
    const int bottom = farEdge(topLeft.y(), NumberReader::readInt(fields[3]));
    return QRect(topLeft, QPoint(right, bottom));
}

QString StringConversions::vector2DToString(const QVector2D &vector, int precision, bool fixed)
{
    return joinReals({vector.x(), vector.y()}, fixed ? decimals : general, precision);
}

QVector2D StringConversions::stringToVector2D(const QString &text)
{
    const Fields<3> fields(text, u' ');
    if (fields.count() != 2) {
        return QVector2D();
    }
    return QVector2D(NumberReader::readFloat(fields[0]), NumberReader::readFloat(fields[1]));
}

QString StringConversions::vector3DToString(const QVector3D &vector, int precision, bool fixed)
{
    return joinReals({vector.x(), vector.y(), vector.z()}, fixed ? decimals : general, precision);
}

QVector3D StringConversions::stringToVector3D(const QString &text)
{
    const Fields<4> fields(text, u' ');
    if (fields.count() != 3) {
        return QVector3D();
    }
    return QVector3D(
        NumberReader::readFloat(fields[0]), NumberReader::readFloat(fields[1]), NumberReader::readFloat(fields[2]));
}

QString StringConversions::matrix4x4ToString(const QMatrix4x4 &matrix, QChar separator)
{
    TextWriter writer;
    for (int row = 0; row < 4; ++row) {
        if (row > 0) {
            writer.append(separator.unicode());
        }
        appendReals(writer, {matrix(row, 0), matrix(row, 1), matrix(row, 2), matrix(row, 3)}, separator, decimals, 17);
    }
    return writer.take();
}

utility::Optional<QMatrix4x4> StringConversions::stringToQMatrix4x4Safe(const QString &text, QChar separator)
{
    const Fields<17> fields(text, separator);
    if (fields.count() != 16) {
        return {};
    }
    QMatrix4x4 matrix;
    std::size_t index = 0;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            matrix(row, column) = static_cast<float>(NumberReader::readDouble(fields[index++]));
        }
    }
    return matrix;
}

QMatrix4x4 StringConversions::stringToQMatrix4x4(const QString &text, QChar separator)
{
    const utility::Optional<QMatrix4x4> matrix = stringToQMatrix4x4Safe(text, separator);
    return matrix.hasValue() ? matrix.getValue() : QMatrix4x4();
}

QString StringConversions::transformToString(const QTransform &transform)
{
    const QTransform &t = transform;
    return joinReals({t.m11(), t.m12(), t.m13(), t.m21(), t.m22(), t.m23(), t.m31(), t.m32(), t.m33()}, decimals, 6);
}

QTransform StringConversions::stringToQTransform(const QString &text)
{
    const Fields<10> fields(text, u' ');
    if (fields.count() != 9) {
        return QTransform();
    }
    const auto m = [&fields](std::size_t index) { return NumberReader::readDouble(fields[index]); };
    return QTransform(m(0), m(1), m(2), m(3), m(4), m(5), m(6), m(7), m(8));
}

QString StringConversions::mapToString(const QMap<QString, QString> &map)
{
    return joinMap(map, [](TextWriter &writer, const QString &value) { writer.append(QStringView(value)); });
}

QString StringConversions::mapToString(const QMap<QString, QVersionNumber> &map)
{
    return joinMap(map, &appendVersion);
}

utility::Optional<QMap<QString, QVersionNumber>> StringConversions::stringToStringVersionMap(const QString &text)
{
    QMap<QString, QVersionNumber> versions;
    for (const QStringView part : QStringTokenizer(QStringView(text), u'|')) {
        const QStringView entry = part.trimmed();
        const qsizetype blank = entry.indexOf(u' ');
        const QStringView version = entry.sliced(blank + 1).trimmed();
        if (blank < 0 || version.contains(u' ')) {
            // Unlike qWarning(), this carries no file and line in debug builds.
            QMessageLogger(nullptr, 0, nullptr).warning().nospace() << "invalid version format (" << text << ")";
            return {};
        }
        const QString key = entry.first(blank).trimmed().toString();
        // mapToString() writes ascending keys, so the end is the right hint.
        versions.insert(versions.cend(), key, QVersionNumber::fromString(version));
    }
    return versions;
}
