#include "NaturalLocale.h"

#include <QLocale>

void ensureNaturalOrder()
{
    const QLocale system = QLocale::system();
    if (system.collation().language() != QLocale::C) {
        return;
    }
    // LC_COLLATE may be C alone. Then the language stays.
    QLocale::setDefault(
        system.language() == QLocale::C ? QLocale(QLocale::English) : QLocale(system.language(), system.territory()));
}
