// Writes the state of a window as texts, and reads texts that a user may have edited.

//! [example]
#include <conversions/StringConversions.h>

#include <QTextStream>

int main()
{
    QTextStream out(stdout);

    // Written and read back.
    const QString geometry = StringConversions::rectToString(QRect(10, 20, 640, 480));
    const QString zoom = StringConversions::vector2DToString(QVector2D(1.5F, 0.1F), 3, true);
    const QString versions = StringConversions::mapToString(
        {{QStringLiteral("ui"), QVersionNumber(2, 0)}, {QStringLiteral("core"), QVersionNumber(1, 2, 3)}});
    out << geometry << '\n' << zoom << '\n' << versions << '\n';
    out << (StringConversions::stringToRect(geometry) == QRect(10, 20, 640, 480)) << '\n';

    // A default outside the valid range shows that the text is invalid.
    out << StringConversions::stringToInt(QStringLiteral("12 px"), -1) << '\n';

    // Readers that return an Optional refuse an invalid text.
    const QString edited = QStringLiteral("core 1.2.3 | ui");
    const auto map = StringConversions::stringToStringVersionMap(edited); // logs a warning
    out << (map.hasValue() ? "accepted" : "refused") << '\n';
    const auto matrix = StringConversions::stringToQMatrix4x4Safe(QStringLiteral("1,0,0,0"), u',');
    out << (matrix.hasValue() ? "accepted" : "refused") << '\n';
}
//! [example]
