#ifndef TARNWICK_LOGGING_CATEGORIESREGISTRY_H
#define TARNWICK_LOGGING_CATEGORIESREGISTRY_H

#include <tarnwick_export.h>

#include <QList>
#include <QString>

class QLoggingCategory;

/** Names of logging categories, and filter rules for them. */
namespace logging {

/**
 * @brief A list of logging category names, in the order of insertion.
 *
 * An application can list the categories that its modules have registered. The list may contain duplicates. It is
 * implicitly shared between copies of a registry. A moved-from registry is empty and usable.
 *
 * Threads: not synchronised, and neither is the registry of CategoriesRegistrySingleton. While a thread inserts, no
 * other thread may insert or read. Modules should therefore register at start-up.
 */
class TARNWICK_EXPORT CategoriesRegistry
{
public:
    /** Creates an empty registry. */
    CategoriesRegistry();

    /** Copies the names of @p source. */
    CategoriesRegistry(const CategoriesRegistry &source);
    /** Moves the names out of @p source, which is then empty. */
    CategoriesRegistry(CategoriesRegistry &&source) noexcept;
    /** Replaces all names with a copy of those of @p source. */
    CategoriesRegistry &operator=(const CategoriesRegistry &source);
    /** Replaces all names with those of @p source, which is then empty. */
    CategoriesRegistry &operator=(CategoriesRegistry &&source) noexcept;
    ~CategoriesRegistry();

    /** Appends @p category unchanged, even if it is empty, invalid or already in the list. */
    void insertCategory(const QString &category);

    /** Returns a reference to the list of the registry, which includes later insertions. */
    const QList<QString> &getCategories() const;

private:
    QList<QString> categories;
};

/**
 * @brief Registers a logging category in its constructor.
 *
 * A module defines one next to each of its categories:
 *
 * @code
 * Q_LOGGING_CATEGORY(network, "app.network")
 * static const logging::CategoriesRegistrar networkRegistrar(
 *     network, logging::CategoriesRegistrySingleton::getInstance());
 * @endcode
 */
class TARNWICK_EXPORT CategoriesRegistrar
{
public:
    /** The type of function that Q_LOGGING_CATEGORY defines. */
    using CategoryFunction = const QLoggingCategory &(*)();

    /**
     * Calls @p category once and appends the name of the returned category, decoded as UTF-8, to @p registry. Changes
     * neither the enabled levels of the category nor any filter rule.
     */
    CategoriesRegistrar(const CategoryFunction &category, CategoriesRegistry &registry);

    /** Registers nothing. */
    CategoriesRegistrar(const CategoriesRegistrar &source) = default;

    /** Leaves the name in the registry. */
    ~CategoriesRegistrar() = default;

    /** Does nothing. */
    CategoriesRegistrar &operator=(const CategoriesRegistrar &source);
};

/** @brief Provides the registry of the process. */
class TARNWICK_EXPORT CategoriesRegistrySingleton
{
public:
    /** Does nothing. The class has no data. */
    CategoriesRegistrySingleton() = default;
    /** @copydoc CategoriesRegistrySingleton() */
    CategoriesRegistrySingleton(const CategoriesRegistrySingleton &source) = default;

    /**
     * Returns the registry of the process, always the same object. The first call creates it, on any thread. It is
     * destroyed by an exit handler. A static object that uses it in its destructor must call this in its constructor,
     * so that it is destroyed first.
     */
    static CategoriesRegistry &getInstance();

    /** Does nothing. */
    CategoriesRegistrySingleton &operator=(const CategoriesRegistrySingleton &source);
};

} // namespace logging

#endif
