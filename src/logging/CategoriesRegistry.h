#ifndef TARNWICK_LOGGING_CATEGORIESREGISTRY_H
#define TARNWICK_LOGGING_CATEGORIESREGISTRY_H

#include <tarnwick_export.h>

#include <QList>
#include <QString>

class QLoggingCategory;

/** Names of logging categories, and the texts of rules that switch them. */
namespace logging {

/**
 * @brief The names of logging categories, in the order of insertion.
 *
 * A plain list, neither sorted nor kept unique, that lets an application ask for the categories its modules declared.
 * Copies share the list until one side changes; a registry that was moved from is empty and usable.
 *
 * Threads: without a lock, the registry of CategoriesRegistrySingleton included. Nobody may insert while another thread
 * inserts or reads, so modules register at start-up.
 */
class TARNWICK_EXPORT CategoriesRegistry
{
public:
    /** Makes an empty registry. */
    CategoriesRegistry();

    /** Takes over the names of @p source, shared until one side changes. */
    CategoriesRegistry(const CategoriesRegistry &source);
    /** Takes the names of @p source, which is empty then. */
    CategoriesRegistry(CategoriesRegistry &&source) noexcept;
    /** Replaces all names by those of @p source, shared until one side changes. */
    CategoriesRegistry &operator=(const CategoriesRegistry &source);
    /** Replaces all names by those of @p source, which is empty then. */
    CategoriesRegistry &operator=(CategoriesRegistry &&source) noexcept;
    ~CategoriesRegistry();

    /** Appends @p category as it stands; empty, repeated and invalid names are taken, too. */
    void insertCategory(const QString &category);

    /** Returns the live list: it shows later insertions, and lives as long as the registry. */
    const QList<QString> &getCategories() const;

private:
    QList<QString> categories;
};

/**
 * @brief Enters one logging category into a registry when it is made, and does nothing after that.
 *
 * A module makes one beside each category it declares:
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
    /** What Q_LOGGING_CATEGORY defines. */
    using CategoryFunction = const QLoggingCategory &(*)();

    /**
     * Calls @p category once and appends the name of what it returns, read as UTF-8, to @p registry. Neither the
     * category's levels nor any filter rule is touched.
     */
    CategoriesRegistrar(const CategoryFunction &category, CategoriesRegistry &registry);

    /** Enters nothing: the name stands in its registry already. */
    CategoriesRegistrar(const CategoriesRegistrar &source) = default;

    /** Does nothing; the name stays in its registry. */
    ~CategoriesRegistrar() = default;

    /** Does nothing. */
    CategoriesRegistrar &operator=(const CategoriesRegistrar &source);
};

/** @brief Gives access to the one registry of the process. */
class TARNWICK_EXPORT CategoriesRegistrySingleton
{
public:
    /** An object holds nothing. */
    CategoriesRegistrySingleton() = default;
    /** @copydoc CategoriesRegistrySingleton() */
    CategoriesRegistrySingleton(const CategoriesRegistrySingleton &source) = default;

    /**
     * Returns the registry of the process, always the same object. The first call makes it, empty, on whatever thread;
     * it lives until the process ends or unloads the library. What uses it in the destructor of a static object calls
     * this in the constructor, too, and so goes first.
     */
    static CategoriesRegistry &getInstance();

    /** Does nothing. */
    CategoriesRegistrySingleton &operator=(const CategoriesRegistrySingleton &source);
};

} // namespace logging

#endif
