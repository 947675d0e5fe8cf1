#ifndef TARNWICK_STRINGS_TRANSLATION_H
#define TARNWICK_STRINGS_TRANSLATION_H

#include <tarnwick_export.h>

#include <QList>
#include <QString>

/** Translation of texts that are in variables instead of literals. */
namespace strings {

/**
 * Translates @p key in @p context with the installed translators, without disambiguation or plural forms. A key without
 * a translation is returned unchanged if it is well-formed. The translators get it as UTF-8, up to its first null
 * character and with lone surrogates replaced, and a key that is not well-formed is returned in that form.
 *
 * May be called on any thread, also while translators are being installed and removed: the translators that are
 * installed at that moment are used. During the call, no installed translator may load a file, and QCoreApplication
 * must not be destroyed.
 *
 * @param context the name of the translation context, null-terminated and in the encoding of the translators (UTF-8)
 */
TARNWICK_EXPORT QString tr(const char *context, const QString &key);

/** Translates @p key in @p context, which is passed on as UTF-8. @overload */
TARNWICK_EXPORT QString tr(const QString &context, const QString &key);

/**
 * Translates each of @p keys and returns the results in the same order. If translators are installed or removed
 * meanwhile, some results may be from before the change and others from after it.
 */
TARNWICK_EXPORT QList<QString> tr(const char *context, const QList<QString> &keys);

/** Translates each of @p keys in @p context, which is passed on as UTF-8. @overload */
TARNWICK_EXPORT QList<QString> tr(const QString &context, const QList<QString> &keys);

} // namespace strings

#endif
