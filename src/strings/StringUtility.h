#ifndef TARNWICK_STRINGS_STRINGUTILITY_H
#define TARNWICK_STRINGS_STRINGUTILITY_H

#include "../foundation/Optional.h"

#include <tarnwick_export.h>

#include <QList>
#include <QMap>
#include <QString>
#include <QVersionNumber>

/**
 * @brief String functions for file names, cleaning, names of persons, and saved version numbers.
 *
 * All functions accept any text. A character is a UTF-16 code unit unless stated otherwise. No result depends on the
 * locale.
 *
 * Threads: stateless. All functions may be called on any thread.
 */
class TARNWICK_EXPORT StringUtility
{
public:
    /**
     * Makes a file name from @p text. Trims it and replaces each backtick and each of the characters
     * / \ : ? % $ # & < > * ! ' " @ + | = ^ with an underscore. If the result is the name of a DOS device (com1 to
     * com9, lpt1 to lpt9, con, nul, prn or aux, in any case), returns "invalid_name".
     *
     * Does not handle device names with an extension such as "NUL.txt", the names "." and "..", trailing dots, control
     * characters, long names and empty names.
     */
    static QString stringToSafeFileName(const QString &text);

    /**
     * Replaces each of the characters ^ _ | \ with a blank and simplifies the result: white space at both ends is
     * removed, and every other run of white space becomes one blank.
     */
    static QString removeInvalidCharacters(const QString &text);

    /** Returns the ASCII letters and digits of @p text. */
    static QString stripNonAlphanumeric(const QString &text);

    /** Returns @p text without any { and }. */
    static QString removeCurlyBrackets(const QString &text);

    /** Returns @p text without any [ and ]. */
    static QString removeSquareBrackets(const QString &text);

    /**
     * Splits @p text at each run of ASCII white space: blank, tab, line feed, vertical tab, form feed, carriage return.
     * Other white space, such as a no-break blank, does not separate. White space at the start or end gives an empty
     * part there. A text without white space is returned as a single part.
     */
    static QList<QString> splitOnWhiteSpaces(const QString &text);

    /**
     * Replaces "&amp;", "&gt;", "&lt;" and "&quot;" in four passes, in this order. A pass sees the results of the
     * passes before it, so "&amp;lt;" becomes "<". Other entities are not replaced.
     */
    static QString fromHtmlEscapedToPlainText(const QString &text);

    /**
     * Splits @p patientName at its first blank (U+0020) into @p firstName and @p lastName. Further blanks are part of
     * the last name. Without a blank, the last name is empty. @p patientName may refer to the same object as
     * @p firstName or @p lastName.
     */
    static void patientNameToFirstLastName(const QString &patientName, QString &firstName, QString &lastName);

    /**
     * Returns the first grapheme cluster of @p secondPart followed by that of @p firstPart. The case is not changed. An
     * empty part has no initial.
     */
    static QString getPatientInitials(const QString &firstPart, const QString &secondPart);

    /**
     * Returns @p text with its first code unit in upper case and all others in lower case. A first character outside
     * the Basic Multilingual Plane consists of two code units and is not changed.
     */
    static QString makeFirstCharacterUpperLowerTheRest(const QString &text);

    /**
     * Applies makeFirstCharacterUpperLowerTheRest() to each part, joins the parts with blanks, and trims the result. An
     * empty part in the middle leaves two consecutive blanks.
     */
    static QString makeFirstCharacterOfPartsUpperCase(const QList<QString> &parts);

    /**
     * Capitalises each word of @p text and joins the words with blanks. Words are separated by white space as in
     * splitOnWhiteSpaces(), not by hyphens or apostrophes.
     */
    static QString capitalizeFirstCharacterOfLastName(const QString &text);

    /**
     * Reads a map of versions such as "core 1.2.3 | ui 2.0". An entry is a key, one blank and a version. White space
     * around an entry is ignored. A version without a number at its start is null. Of several entries with the same
     * key, the last one counts.
     *
     * @return an empty Optional if an entry does not have exactly two fields, separated by a blank. An empty text has
     *         such an entry. Then the whole text is logged once as a warning in Qt's default category.
     */
    static utility::Optional<QMap<QString, QVersionNumber>> saveableUIStringToMap(const QString &stringMap);

    /**
     * Reads the first two fields of @p versionText, separated by dots. A field may have a sign and ASCII white space
     * around it. A field that is not a decimal integer, or is outside the range of int, gives 0. Without a dot, both
     * results are -1.
     */
    static void versionStringTo2Numbers(const QString &versionText, int &majorNumber, int &minorNumber);
};

#endif
