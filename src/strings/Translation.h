#ifndef TARNWICK_STRINGS_TRANSLATION_H
#define TARNWICK_STRINGS_TRANSLATION_H

#include <tarnwick_export.h>

#include <QList>
#include <QString>

/** Translation of texts that code has in variables rather than in literals. */
namespace strings {

/**
 * Translates @p key in @p context through the installed translators, without disambiguation and without plural. A key
 * that has no translation comes back as it is. The key is handed on as UTF-8 up to its first null character.
 *
 * May be called on any thread, also while translators are installed and removed: the key is translated by those that
 * are installed at that moment. A translator must not load, and QCoreApplication not end, meanwhile.
 *
 * @param context name of the translation context, ended by a null character, in the encoding of the translators (UTF-8)
 */
TARNWICK_EXPORT QString tr(const char *context, const QString &key);

/** Translates @p key in @p context, which is handed on as UTF-8. @overload */
TARNWICK_EXPORT QString tr(const QString &context, const QString &key);

/**
 * Translates each of @p keys by itself and returns the results in the same order, as many as there are keys. When
 * translators come or go meanwhile, the results may be by several.
 */
TARNWICK_EXPORT QList<QString> tr(const char *context, const QList<QString> &keys);

/** Translates each of @p keys in @p context, which is handed on as UTF-8. @overload */
TARNWICK_EXPORT QList<QString> tr(const QString &context, const QList<QString> &keys);

} // namespace strings

#endif
