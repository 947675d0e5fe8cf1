// Types by name, a marker against changes, and an optional value.

//! [example]
#include <foundation/CoreObject.h>
#include <foundation/ModificationLock.h>
#include <foundation/Optional.h>

#include <QTextStream>

class Shape : public CoreObject
{
public:
    Shape() { CORE_OBJECT_INIT(getClassTypeId()); }
    static const QString getClassTypeId() { return QStringLiteral("Shape"); }
    const QString getTypeId() const override { return getClassTypeId(); }
};

class Circle : public Shape
{
public:
    Circle() { CORE_OBJECT_INIT(getClassTypeId()); }
    static const QString getClassTypeId() { return QStringLiteral("Circle"); }
    const QString getTypeId() const override { return getClassTypeId(); }
};

// Returns an empty Optional while the data are marked as being modified.
static utility::Optional<int> increase(int value)
{
    if (utility::ModificationLock::isLocked(utility::ModificationLock::Data)) {
        return {};
    }
    return value + 1;
}

int main()
{
    QTextStream out(stdout);
    const Circle circle;
    out << circle.getTypeId() << " is of the types " << circle.getInheritanceList().join(u' ') << '\n';
    out << "a Shape: " << circle.isOfType(Shape::getClassTypeId())
        << ", a Square: " << circle.isOfType(QStringLiteral("Square")) << '\n';

    const auto print = [&out](const utility::Optional<int> &value) {
        if (value.hasValue()) {
            out << value.getValue() << '\n';
        } else {
            out << "locked\n";
        }
    };
    print(increase(1));
    {
        const utility::ModificationLock lock(utility::ModificationLock::Data);
        print(increase(1));
    }
    print(increase(2));
}
//! [example]
