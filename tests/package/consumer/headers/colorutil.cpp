#include <numerics/ColorUtil.h>

QColor mixColors()
{
    return ColorUtil::interpolate(QColor(), QColor(), 0.5);
}
