#include <qtextensions/QVariantLess.h>

bool compareVariants()
{
    return qtextensions::QVariantLess()(QVariant(1), QVariant(2));
}
