#ifndef TARNWICK_FOUNDATION_COREOBJECT_H
#define TARNWICK_FOUNDATION_COREOBJECT_H

#include <tarnwick_export.h>

#include <QList>
#include <QString>

/**
 * @brief Root of classes that are known at run time by the names of their types.
 *
 * Each object carries the ids of the classes it was built from, from the root downwards, and answers whether it is of a
 * type. A derived class defines its own static getClassTypeId(), overrides getTypeId() to return that id and enters it
 * in its constructor:
 *
 * @code
 * Shape::Shape() { CORE_OBJECT_INIT(getClassTypeId()); }
 * @endcode
 *
 * CoreObject enters no id of its own, so isOfType("CoreObject") is false unless a derived class enters that, too.
 * There is no registry: the list lives in the object, and copies share it until one side changes. A copy takes over the
 * list, while its dynamic type stays that of the class it was made as.
 *
 * Threads: as thread-safe as the list it holds; objects may be read on many threads at once, but not while one changes.
 */
class TARNWICK_EXPORT CoreObject
{
public:
    /** Makes an object with an empty list. */
    CoreObject();

    /** Takes over the list of @p source. */
    CoreObject(const CoreObject &source);

    /** Replaces the whole list by that of @p source; what getTypeId() answers stays. */
    CoreObject &operator=(const CoreObject &source);

    /** Returns "CoreObject", constant text that allocates nothing. */
    static const QString getClassTypeId();

    // The order of the virtual operations is part of the binary interface: getTypeId() stands before the destructor.

    /** Returns the id of the most derived class, here "CoreObject"; constant text that allocates nothing. */
    virtual const QString getTypeId() const;

    virtual ~CoreObject();

    /** Returns the ids entered on this object, in the order of entry; a shared copy. */
    QList<QString> getInheritanceList() const;

    /** Returns whether @p typeId was entered on this object; upper and lower case differ. */
    bool isOfType(const QString &typeId) const;

    /** Returns whether at least one of @p typeIds was entered on this object. */
    bool isOfAnyType(const QList<QString> &typeIds) const;

protected:
    /**
     * Enters @p classTypeId at the end of the list. An id that is there already, be it from a copy or an assignment, is
     * ignored with a warning: "CoreObject : duplicate class type id detected; ignored: ", one more blank, and the id in
     * double quotes.
     */
    void CORE_OBJECT_INIT(const QString &classTypeId);

private:
    QList<QString> inheritanceList; // holds no id twice
};

#endif
