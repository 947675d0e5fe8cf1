#ifndef FILEDIGEST_NATURALLOCALE_H
#define FILEDIGEST_NATURALLOCALE_H

/**
 * Sets another default locale if NaturalSort has no natural order in the system's. The C locale, which containers
 * usually have, sorts by code units.
 */
void ensureNaturalOrder();

#endif
