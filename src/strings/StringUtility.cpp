#include "StringUtility.h"

#include <QChar>
#include <QDebug>
#include <QLatin1StringView>
#include <QMessageLogger>
#include <QStringTokenizer>
#include <QStringView>
#include <QTextBoundaryFinder>
#include <QtGlobal>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView illegalFileNameCharacters = u"/\\:?%$#&<>*!'\"@+`|=^";

constexpr std::array<QStringView, 22> reservedDeviceNames = {
    u"com1",
    u"com2",
    u"com3",
    u"com4",
    u"com5",
    u"com6",
    u"com7",
    u"com8",
    u"com9",
    u"lpt1",
    u"lpt2",
    u"lpt3",
    u"lpt4",
    u"lpt5",
    u"lpt6",
    u"lpt7",
    u"lpt8",
    u"lpt9",
    u"con",
    u"nul",
    u"prn",
    u"aux",
};

// Not regular expressions: QRegularExpression does not match anything in a text with a lone surrogate.

bool isAsciiLetterOrDigit(QChar character)
{
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z')
        || (character >= u'0' && character <= u'9');
}

bool isAsciiSpace(QChar character)
{
    return character == u' ' || (character >= u'\t' && character <= u'\r');
}

QString getFirstGrapheme(const QString &text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    return text.left(finder.toNextBoundary());
}

} // namespace

QString StringUtility::stringToSafeFileName(const QString &text)
{
    QString name = text.trimmed();
    for (const QChar illegal : illegalFileNameCharacters) {
        name.replace(illegal, u'_');
    }
    const bool isReserved = std::any_of(reservedDeviceNames.cbegin(),
        reservedDeviceNames.cend(),
        [&name](QStringView reserved) { return reserved.compare(name, Qt::CaseInsensitive) == 0; });
    return isReserved ? u"invalid_name"_s : name;
}

QString StringUtility::removeInvalidCharacters(const QString &text)
{
    QString result = text;
    for (const QChar separator : QStringView(u"^_|\\")) {
        result.replace(separator, u' ');
    }
    return result.simplified();
}

QString StringUtility::stripNonAlphanumeric(const QString &text)
{
    QString result = text;
    return result.removeIf([](QChar character) { return !isAsciiLetterOrDigit(character); });
}

QString StringUtility::removeCurlyBrackets(const QString &text)
{
    QString result = text;
    return result.removeIf([](QChar character) { return character == u'{' || character == u'}'; });
}

QString StringUtility::removeSquareBrackets(const QString &text)
{
    QString result = text;
    return result.removeIf([](QChar character) { return character == u'[' || character == u']'; });
}

QList<QString> StringUtility::splitOnWhiteSpaces(const QString &text)
{
    if (text.isEmpty()) {
        return {u""_s};
    }
    QList<QString> parts;
    auto begin = text.cbegin();
    for (;;) {
        const auto end = std::find_if(begin, text.cend(), isAsciiSpace);
        parts.append(QString(begin, end - begin));
        if (end == text.cend()) {
            return parts;
        }
        begin = std::find_if_not(end, text.cend(), isAsciiSpace);
    }
}

QString StringUtility::fromHtmlEscapedToPlainText(const QString &text)
{
    QString result = text;
    result.replace("&amp;"_L1, "&"_L1);
    result.replace("&gt;"_L1, ">"_L1);
    result.replace("&lt;"_L1, "<"_L1);
    result.replace("&quot;"_L1, "\""_L1);
    return result;
}

void StringUtility::patientNameToFirstLastName(const QString &patientName, QString &firstName, QString &lastName)
{
    const qsizetype blank = patientName.indexOf(u' ');
    // Assigned last: patientName may refer to the same object as firstName or lastName.
    QString first = patientName.left(blank);
    QString last = blank < 0 ? u""_s : patientName.sliced(blank + 1);
    firstName = std::move(first);
    lastName = std::move(last);
}

QString StringUtility::getPatientInitials(const QString &firstPart, const QString &secondPart)
{
    return getFirstGrapheme(secondPart) + getFirstGrapheme(firstPart);
}

QString StringUtility::makeFirstCharacterUpperLowerTheRest(const QString &text)
{
    return text.left(1).toUpper() + text.mid(1).toLower();
}

QString StringUtility::makeFirstCharacterOfPartsUpperCase(const QList<QString> &parts)
{
    QString result = u""_s;
    for (const QString &part : parts) {
        result += u' ' + makeFirstCharacterUpperLowerTheRest(part);
    }
    return result.trimmed();
}

QString StringUtility::capitalizeFirstCharacterOfLastName(const QString &text)
{
    const QList<QString> parts = splitOnWhiteSpaces(text);
    return parts.size() < 2 ? makeFirstCharacterUpperLowerTheRest(text) : makeFirstCharacterOfPartsUpperCase(parts);
}

utility::Optional<QMap<QString, QVersionNumber>> StringUtility::saveableUIStringToMap(const QString &stringMap)
{
    QMap<QString, QVersionNumber> result;
    for (const QStringView part : QStringTokenizer(stringMap, u'|')) {
        const QStringView entry = part.trimmed();
        const qsizetype blank = entry.indexOf(u' ');
        if (blank < 0 || blank != entry.lastIndexOf(u' ')) {
            QMessageLogger(nullptr, 0, nullptr).warning()
                << "Corrupt string for stringToMap: stringMap (" << stringMap << ")";
            return {};
        }
        result.insert(entry.first(blank).toString(), QVersionNumber::fromString(entry.sliced(blank + 1)));
    }
    return result;
}

void StringUtility::versionStringTo2Numbers(const QString &versionText, int &majorNumber, int &minorNumber)
{
    const QStringView text = versionText;
    const qsizetype dot = text.indexOf(u'.');
    if (dot < 0) {
        majorNumber = -1;
        minorNumber = -1;
        return;
    }
    const QStringView rest = text.sliced(dot + 1);
    majorNumber = text.first(dot).toInt();
    minorNumber = rest.left(rest.indexOf(u'.')).toInt();
}
