// Compiled against libc++: what the tests need of a Qt whose own functions take the types of libstdc++.
#include <QByteArray>
#include <QMetaType>

#include <functional>
#include <string>

bool registerConverterInQt(
    bool (*call)(const void *context, const void *from, void *to), const void *context, QMetaType from, QMetaType to);
bool registerMutableViewInQt(
    bool (*call)(const void *context, void *from, void *to), const void *context, QMetaType from, QMetaType to);

QByteArray QByteArray::fromStdString(const std::string &text)
{
    return QByteArray(text.data(), static_cast<qsizetype>(text.size()));
}

std::string QByteArray::toStdString() const
{
    return std::string(data(), static_cast<std::size_t>(size()));
}

// The registered functions live until the end of the process.
bool QMetaType::registerConverterFunction(const ConverterFunction &function, QMetaType from, QMetaType to)
{
    const auto call = [](const void *context, const void *source, void *target) {
        return (*static_cast<const ConverterFunction *>(context))(source, target);
    };
    return registerConverterInQt(call, new ConverterFunction(function), from, to);
}

bool QMetaType::registerMutableViewFunction(const MutableViewFunction &function, QMetaType from, QMetaType to)
{
    const auto call = [](const void *context, void *source, void *target) {
        return (*static_cast<const MutableViewFunction *>(context))(source, target);
    };
    return registerMutableViewInQt(call, new MutableViewFunction(function), from, to);
}
