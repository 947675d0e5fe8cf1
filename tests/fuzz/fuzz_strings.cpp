// Aims at: src/strings/StringUtility.cpp
#include "../support/LogRecorder.h"
#include "Fuzz.h"

#include <strings/StringUtility.h>

#include <QTextBoundaryFinder>

// File names, cleaning, names of persons, saved maps and version numbers, against plain sequences of calls to Qt.

using namespace Qt::StringLiterals;
using S = StringUtility;

namespace {

QString replaceEach(QString text, const QString &characters, const QString &replacement)
{
    for (const QChar character : characters) {
        text.replace(character, replacement);
    }
    return text;
}

QString makeSafe(const QString &text)
{
    const QString name = replaceEach(text.trimmed(), u"/\\:?%$#&<>*!'\"@+`|=^"_s, u"_"_s);
    const QString lower = name.toLower();
    const bool isPort = lower.startsWith(u"com"_s) || lower.startsWith(u"lpt"_s);
    const bool isReserved = isPort ? name.size() == 4 && u"123456789"_s.contains(name.back())
                                   : QStringList{u"con"_s, u"nul"_s, u"prn"_s, u"aux"_s}.contains(lower);
    return isReserved ? u"invalid_name"_s : name;
}

QStringList split(const QString &text)
{
    QString blanks = replaceEach(text, u"\t\n\v\f\r"_s, u" "_s);
    while (blanks.contains(u"  "_s)) {
        blanks.replace(u"  "_s, u" "_s);
    }
    return blanks.split(u' ');
}

void checkNames(const QString &text, const QString &other)
{
    QString first = text;
    QString last = other;
    S::patientNameToFirstLastName(first, first, last);
    check({first, last}, QStringList{text.section(u' ', 0, 0), text.section(u' ', 1)}, text);
    const auto initial = [](const QString &name) {
        return name.left(QTextBoundaryFinder(QTextBoundaryFinder::Grapheme, name).toNextBoundary());
    };
    check(S::getPatientInitials(text, other), initial(other) + initial(text), text + other);

    const QString capitalized = S::makeFirstCharacterUpperLowerTheRest(text);
    check(capitalized, QString(text.left(1)).toUpper() + text.mid(1).toLower(), text);
    const QString both = (capitalized + u' ' + S::makeFirstCharacterUpperLowerTheRest(other)).trimmed();
    check(S::makeFirstCharacterOfPartsUpperCase({text, other}), both, text + other);
    const QStringList words = split(text);
    check(S::capitalizeFirstCharacterOfLastName(text),
        words.size() == 1 ? capitalized : S::makeFirstCharacterOfPartsUpperCase(words),
        text);
}

void checkVersions(const QString &text)
{
    QMap<QString, QVersionNumber> expected;
    QString warning = u"1 default Corrupt string for stringToMap: stringMap ( %1 )"_s.arg(QDebug::toString(text));
    const QStringList entries = text.split(u'|');
    if (std::all_of(entries.begin(), entries.end(), [](const QString &e) { return e.trimmed().count(u' ') == 1; })) {
        warning.clear();
        for (const QString &entry : entries) {
            expected[entry.trimmed().section(u' ', 0, 0)] =
                QVersionNumber::fromString(entry.trimmed().section(u' ', 1));
        }
    }
    const LogRecorder log;
    const auto map = S::saveableUIStringToMap(text);
    check(map.hasValue() ? map.getValue() : QMap<QString, QVersionNumber>(), expected, text);
    check(log.getLines().join(u'\n'), warning, text);

    int majorNumber = 7;
    int minorNumber = 7;
    S::versionStringTo2Numbers(text, majorNumber, minorNumber);
    const bool hasDot = text.contains(u'.');
    check(majorNumber, hasDot ? text.section(u'.', 0, 0).toInt() : -1, text);
    check(minorNumber, hasDot ? text.section(u'.', 1, 1).toInt() : -1, text);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QStringList pieces = u" . . | .|.\t.\n.\v.\f.\r.\u0085.\u00a0.\u2003.con.NUL.Com.LPT.1.0.9.core .ui "
                                      u".2147483648.-3.x.\u0661.&amp;.&gt;."
                                      "&lt;.&quot;.&.lt;.amp;.{.}.[.].McDONALD.o'neil.\u00df.\u0130.\u01c6.\u0301."
                                      "\u1100.\u1161.\U0001f469.\u200d.\U0001f52c."
                                      "\U0001f1e9.\U00010428"_s.split(u'.')
        + QStringList{u"."_s, u"1.2.3"_s, QChar(0xd800), QChar(0xdc00), QChar(u'\0')};
    Input input(data, size);
    const QString text = input.text(pieces);
    check(S::stringToSafeFileName(text), makeSafe(text), text);
    check(S::removeInvalidCharacters(text), replaceEach(text, u"^_|\\"_s, u" "_s).simplified(), text);
    check(S::removeCurlyBrackets(text), replaceEach(text, u"{}"_s, {}), text);
    check(S::removeSquareBrackets(text), replaceEach(text, u"[]"_s, {}), text);
    check(S::splitOnWhiteSpaces(text), split(text), text);
    QString alphanumeric = text;
    alphanumeric.removeIf([](QChar c) { return c >= u'\x80' || !c.isLetterOrNumber(); });
    check(S::stripNonAlphanumeric(text), alphanumeric, text);
    QString plainText = text;
    for (const QString &entity : u"&amp;& &gt;> &lt;< &quot;\""_s.split(u' ')) {
        plainText = plainText.split(entity.chopped(1)).join(entity.back());
    }
    check(S::fromHtmlEscapedToPlainText(text), plainText, text);
    checkNames(text, input.text(pieces, 8));
    checkVersions(text);
    return 0;
}
