// Compiled against libstdc++, as Qt is: passes on what qt.cpp gets as a function of libc++.
#include <QMetaType>

bool registerConverterInQt(
    bool (*call)(const void *context, const void *from, void *to), const void *context, QMetaType from, QMetaType to)
{
    return QMetaType::registerConverterFunction(
        [call, context](const void *source, void *target) { return call(context, source, target); }, from, to);
}

bool registerMutableViewInQt(
    bool (*call)(const void *context, void *from, void *to), const void *context, QMetaType from, QMetaType to)
{
    return QMetaType::registerMutableViewFunction(
        [call, context](void *source, void *target) { return call(context, source, target); }, from, to);
}
