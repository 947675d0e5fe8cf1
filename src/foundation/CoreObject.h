#ifndef TARNWICK_FOUNDATION_COREOBJECT_H
#define TARNWICK_FOUNDATION_COREOBJECT_H

#include <tarnwick_export.h>

#include <QList>
#include <QString>

/**
 * @brief Base class of objects that know the names of their types at run time.
 *
 * Each object has a list with the ids of its classes, the root class first. A derived class has an id: its static
 * getClassTypeId() and its getTypeId() return the id, and its constructor enters it:
 *
 * @code
 * Shape::Shape() { CORE_OBJECT_INIT(getClassTypeId()); }
 * @endcode
 *
 * CoreObject enters no id of its own, so isOfType("CoreObject") is false unless a derived class enters that id. The
 * list belongs to the object; there is no common registry. Copying and assignment copy the list (it is implicitly
 * shared) and do not change the dynamic type.
 *
 * An id made with u"..."_s refers to constant data of the module that contains the literal. If that module is a plugin,
 * the id dangles after the plugin is unloaded. For objects that outlive the plugin, enter a deep copy.
 *
 * Threads: several threads may read an object at the same time, but not while a thread changes it.
 */
class TARNWICK_EXPORT CoreObject
{
public:
    /** Creates an object with an empty list. */
    CoreObject();

    /** Copies the list of @p source. */
    CoreObject(const CoreObject &source);

    /** Replaces the list with that of @p source. The result of getTypeId() does not change. */
    CoreObject &operator=(const CoreObject &source);

    /** Returns "CoreObject". Does not allocate. */
    static const QString getClassTypeId();

    // The order of the virtual functions is part of the binary interface: getTypeId() comes before the destructor.

    /** Returns the id of the most derived class, here "CoreObject". Does not allocate. */
    virtual const QString getTypeId() const;

    virtual ~CoreObject();

    /** Returns the list of ids, in the order of their entry. Implicitly shared. */
    QList<QString> getInheritanceList() const;

    /** Returns whether @p typeId was entered on this object. The comparison is case-sensitive. */
    bool isOfType(const QString &typeId) const;

    /** Returns whether at least one of @p typeIds was entered on this object. */
    bool isOfAnyType(const QList<QString> &typeIds) const;

protected:
    /**
     * Appends @p classTypeId to the list. If the list already contains the id, also by copying or assignment, the id is
     * ignored and logged as a warning: "CoreObject : duplicate class type id detected; ignored: ", another blank, and
     * the id in double quotes.
     */
    void CORE_OBJECT_INIT(const QString &classTypeId);

private:
    QList<QString> inheritanceList; // without duplicates
};

#endif
