// Aims at: src/strings/NaturalSort.cpp
#include "Fuzz.h"

#include <strings/NaturalSort.h>

#include <QCollator>
#include <QLocale>

// Lists of texts, sorted in any locale. The order of ASCII and letters against the collator's comparison of each pair:
// this shows whether its sort keys may be used for them.

namespace {

QString makeAsciiAndLetters(Input &input, char16_t firstLetter)
{
    QString text;
    for (int length = input.below(9); length > 0; --length) {
        const int byte = input.below(256);
        const QChar letter(static_cast<char16_t>(firstLetter + byte % 64));
        const bool isLetter = letter.isLetter() && letter.category() != QChar::Letter_Modifier;
        text += isLetter && byte >= 128 ? letter : QChar(byte % 128);
    }
    return text;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QList<QLocale> locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory);
    Input input(data, size);
    QLocale::setDefault(locales.at(input.integer<quint16>() % locales.size()));
    const bool isAsciiAndLetters = !input.oneIn(4);
    const auto firstLetter = input.integer<char16_t>();
    const QStringList pieces = {QString(), QChar(firstLetter), QChar(0x661), QChar(0x30fc), QChar(0xd83d)};
    QList<QString> list;
    while (!input.isAtEnd()) {
        list.append(isAsciiAndLetters ? makeAsciiAndLetters(input, firstLetter) : input.text(pieces, 8));
    }
    QList<QString> expected = list;
    NaturalSort::sort(list);
    QCollator collator;
    collator.setNumericMode(true);
    for (qsizetype i = 0; isAsciiAndLetters && i < list.size(); ++i) {
        for (qsizetype j = i + 1; j < list.size(); ++j) {
            check("sort, pair", collator.compare(list.at(i), list.at(j)) <= 0, true, list.at(i) + u'|' + list.at(j));
        }
    }
    list.sort();
    expected.sort();
    check("sort, permutation", list, expected);
    return 0;
}
