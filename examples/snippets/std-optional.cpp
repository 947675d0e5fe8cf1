// Converts the library's optional values to those of the standard, and back.

#include <conversions/StringConversions.h>

#include <QTextStream>

#include <optional>
#include <utility>

//! [recipe]
template <typename T>
std::optional<T> toStdOptional(utility::Optional<T> value)
{
    return value.hasValue() ? std::optional<T>(std::move(value.getValue())) : std::nullopt;
}

template <typename T>
utility::Optional<T> fromStdOptional(std::optional<T> value)
{
    return value ? utility::Optional<T>(std::move(*value)) : utility::Optional<T>();
}
//! [recipe]

int main()
{
    QTextStream out(stdout);
    const QString text = QStringLiteral("core 1.2.3 | ui 2.0");
    const auto versions = toStdOptional(StringConversions::stringToStringVersionMap(text));
    out << "versions: " << (versions ? versions->size() : 0) << '\n';
    out << "matrix: " << toStdOptional(StringConversions::stringToQMatrix4x4Safe(text)).has_value() << '\n';

    const utility::Optional<int> seven = fromStdOptional(std::optional<int>(7));
    out << "seven: " << (seven.hasValue() ? seven.getValue() : 0) << '\n';
    out << "nothing: " << fromStdOptional(std::optional<int>()).hasValue() << '\n';
}
