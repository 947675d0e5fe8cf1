#include "NaturalLocale.h"

#include <QLocale>

void ensureNaturalOrder()
{
    const QLocale system = QLocale::system();
    if (system.collation().language() != QLocale::C) {
        return;
    }
    // If only LC_COLLATE is C, the language is kept.
    QLocale::setDefault(
        system.language() == QLocale::C ? QLocale(QLocale::English) : QLocale(system.language(), system.territory()));
}
