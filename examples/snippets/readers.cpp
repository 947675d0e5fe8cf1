// What each reader returns for invalid texts. The writer of the same type shows the results.

#include <conversions/StringConversions.h>
#include <strings/StringUtility.h>

#include <QTextStream>

#include <functional>
#include <vector>

namespace {

using Conversions = StringConversions;

struct Reader
{
    const char *name;
    const char *texts; // one line each
    std::function<QString(const QString &)> readAndWrite;
};

QString write(const utility::Optional<QMap<QString, QVersionNumber>> &map)
{
    return map.hasValue() ? u'"' + Conversions::mapToString(map.getValue()) + u'"' : QStringLiteral("nothing");
}

QString write(const utility::Optional<QMatrix4x4> &matrix)
{
    return matrix.hasValue() ? QStringLiteral("a matrix") : QStringLiteral("nothing");
}

QString readTwoNumbers(const QString &text)
{
    int majorNumber = 0;
    int minorNumber = 0;
    StringUtility::versionStringTo2Numbers(text, majorNumber, minorNumber);
    return Conversions::integerArrayToString({majorNumber, minorNumber});
}

std::vector<Reader> getReaders()
{
    using C = Conversions;
    const char *const sixteen = "x,0,0,0,0,1,0,0,0,0,1,0,0,0,0,1\n1,2,3";
    const char *const maps = "\ncore\ncore 1 2\ncore  1.2\ncore 1.2abc\ncore abc\ncore 1 | core 2\ncore 1 |";
    return {
        {"stringToBool", "\nyes\n true", [](const QString &text) { return C::boolToString(C::stringToBool(text)); }},
        {"stringToInt(text, 5)",
            "\n12abc\n0x10\n2147483648",
            [](const QString &text) { return C::intToString(C::stringToInt(text, 5)); }},
        {"stringToFloat",
            "\ne3\n2.5e\n2e1e9\nabc",
            [](const QString &text) { return QString::number(C::stringToFloat(text)); }},
        {"stringToIntegerArray",
            "\n1 x  2",
            [](const QString &text) { return C::integerArrayToString(C::stringToIntegerArray(text)); }},
        {"stringToQPoint",
            "\n10\n10 x\n10  20\n10 20 30",
            [](const QString &text) { return C::qpointToString(C::stringToQPoint(text)); }},
        {"stringToQPointF",
            "\n1.5\n1.5 x\n1.5 2 3",
            [](const QString &text) { return C::qpointfToString(C::stringToQPointF(text)); }},
        {"stringToQSize",
            "\n640\n640 x 480\n640 480 ",
            [](const QString &text) { return C::qSizeToString(C::stringToQSize(text)); }},
        {"stringToQSizeF",
            "\n2.5\n2.5 x 4.5",
            [](const QString &text) { return C::qSizeFToString(C::stringToQSizeF(text)); }},
        {"stringToRect",
            "\n1,2,30\n1,x,30,40\n1,2,30,40,50",
            [](const QString &text) { return C::rectToString(C::stringToRect(text)); }},
        {"stringToVector2D",
            "\n1\nx 2\n1 2 3",
            [](const QString &text) { return C::vector2DToString(C::stringToVector2D(text)); }},
        {"stringToVector3D",
            "\n1 2\n1 x 3\n1 2 3 4",
            [](const QString &text) { return C::vector3DToString(C::stringToVector3D(text)); }},
        {"stringToQMatrix4x4Safe",
            sixteen,
            [](const QString &text) { return write(C::stringToQMatrix4x4Safe(text, u',')); }},
        {"stringToQMatrix4x4",
            sixteen,
            [](const QString &text) {
                return C::stringToQMatrix4x4(text, u',').isIdentity() ? QStringLiteral("identity")
                                                                      : QStringLiteral("a matrix");
            }},
        {"stringToQTransform",
            "\n1 2 3\nx 0 0 0 1 0 5 6 1",
            [](const QString &text) { return C::transformToString(C::stringToQTransform(text)); }},
        {"stringToStringVersionMap",
            maps,
            [](const QString &text) { return write(C::stringToStringVersionMap(text)); }},
        {"saveableUIStringToMap",
            maps,
            [](const QString &text) { return write(StringUtility::saveableUIStringToMap(text)); }},
        {"versionStringTo2Numbers", "\n12\n1.\n.5\na.2\n1.2.3", readTwoNumbers},
    };
}

} // namespace

int main()
{
    QTextStream out(stdout);
    for (const Reader &reader : getReaders()) {
        out << reader.name << '\n';
        const QStringList texts = QString::fromLatin1(reader.texts).split(u'\n');
        for (const QString &text : texts) {
            out << "    \"" << text << "\" gives " << reader.readAndWrite(text) << '\n';
        }
    }
}
