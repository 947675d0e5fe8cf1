#ifndef FILEDIGEST_NATURALLOCALE_H
#define FILEDIGEST_NATURALLOCALE_H

/**
 * Sets another default locale if the system's has no natural order, for NaturalSort: the C locale, which containers
 * have, sorts by code units.
 */
void ensureNaturalOrder();

#endif
