#ifndef TARNWICK_STRINGS_STRINGUTILITY_H
#define TARNWICK_STRINGS_STRINGUTILITY_H

#include "../foundation/Optional.h"

#include <tarnwick_export.h>

#include <QList>
#include <QMap>
#include <QString>
#include <QVersionNumber>

/**
 * @brief Fixed, exactly defined changes to texts: safe file names, cleaning, names of persons, saved versions.
 *
 * Every text is a valid argument of every operation. A character is a UTF-16 code unit unless an operation says
 * otherwise, and no result depends on the locale.
 *
 * Threads: no state; may be used on any thread.
 */
class TARNWICK_EXPORT StringUtility
{
public:
    /** An object holds nothing; copying, moving and assigning one does nothing. */
    StringUtility() = default;
    /** @copydoc StringUtility() */
    StringUtility(const StringUtility &source) = default;
    /** @copydoc StringUtility() */
    StringUtility(StringUtility &&source) = default;
    /** @copydoc StringUtility() */
    StringUtility &operator=(const StringUtility &source) = default;
    /** @copydoc StringUtility() */
    StringUtility &operator=(StringUtility &&source) = default;

    /**
     * Returns @p text as the name of a file: white space at both ends is cut off, each of the characters
     * / \ : ? % $ # & < > * ! ' " @ + ` | = ^ becomes one underscore, and what is then the name of a DOS device in
     * either case (com1 to com9, lpt1 to lpt9, con, nul, prn, aux) becomes "invalid_name".
     *
     * Left to the caller: names of devices with an extension such as "NUL.txt", the names "." and "..", dots at the
     * end, control characters, the length, and an empty result.
     */
    static QString stringToSafeFileName(const QString &text);

    /**
     * Returns @p text with each of ^ _ | \ taken as white space, all runs of white space inside reduced to one blank,
     * and none at the ends.
     */
    static QString removeInvalidCharacters(const QString &text);

    /** Returns the ASCII letters and digits of @p text. */
    static QString stripNonAlphanumeric(const QString &text);

    /** Returns @p text without { and }, paired or not. */
    static QString removeCurlyBrackets(const QString &text);

    /** Returns @p text without [ and ], paired or not. */
    static QString removeSquareBrackets(const QString &text);

    /**
     * Splits @p text at each run of ASCII white space (blank, tab, line feed, vertical tab, form feed, carriage
     * return); other white space, such as a no-break blank, does not separate. White space at an end gives an empty
     * part there, and a text without any gives itself as the one part.
     */
    static QList<QString> splitOnWhiteSpaces(const QString &text);

    /**
     * Resolves "&amp;", then "&gt;", "&lt;" and "&quot;", each in one pass over the whole text. What one pass makes the
     * next one sees, so "&amp;lt;" becomes "<". All other entities stay as they are.
     */
    static QString fromHtmlEscapedToPlainText(const QString &text);

    /**
     * Cuts @p patientName at its first blank (U+0020): what stands ahead of it becomes @p firstName, all that follows,
     * further blanks included, @p lastName. Without a blank the whole is the first name and the last name is empty.
     * Either result may be the variable that holds the name.
     */
    static void patientNameToFirstLastName(const QString &patientName, QString &firstName, QString &lastName);

    /**
     * Returns the first user-perceived character (grapheme cluster) of @p secondPart, followed by that of @p firstPart,
     * without a change of case. An empty part gives none.
     */
    static QString getPatientInitials(const QString &firstPart, const QString &secondPart);

    /**
     * Returns @p text with its first code unit in upper case and all others in lower case. A first character beyond the
     * Basic Multilingual Plane, which takes two code units, stays as it is.
     */
    static QString makeFirstCharacterUpperLowerTheRest(const QString &text);

    /**
     * Applies makeFirstCharacterUpperLowerTheRest() to each part and joins them by a blank, without white space at the
     * ends. An empty part between others leaves two blanks.
     */
    static QString makeFirstCharacterOfPartsUpperCase(const QList<QString> &parts);

    /**
     * Capitalises each of the words that splitOnWhiteSpaces() finds in @p text, joined by one blank. A hyphen or an
     * apostrophe does not begin a word.
     */
    static QString capitalizeFirstCharacterOfLastName(const QString &text);

    /**
     * Reads a map of versions from a text such as "core 1.2.3 | ui 2.0". White space around an entry does not count; an
     * entry is a key, one blank and a version. A version without a number at its start is null, and of equal keys the
     * last one holds.
     *
     * @return the map, or nothing if an entry does not consist of exactly two fields, an empty text included; then the
     *         whole text is logged as a warning.
     */
    static utility::Optional<QMap<QString, QVersionNumber>> saveableUIStringToMap(const QString &stringMap);

    /**
     * Reads the first two numbers of @p versionText, which dots separate. A field that is no decimal number within the
     * range of int gives 0; without a dot, both results become -1.
     */
    static void versionStringTo2Numbers(const QString &versionText, int &majorNumber, int &minorNumber);
};

#endif
