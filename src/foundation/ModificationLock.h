#ifndef TARNWICK_FOUNDATION_MODIFICATIONLOCK_H
#define TARNWICK_FOUNDATION_MODIFICATIONLOCK_H

#include <tarnwick_export.h>

#include <QtGlobal>

#include <array>
#include <atomic>

namespace utility {

/**
 * @brief Marks, while it exists, that data or their presentation are being modified.
 *
 * A marker does not block anything: code that respects it calls isLocked(). Markers of one type may nest and overlap.
 * The types are independent of each other.
 *
 * Threads: all functions may be called on any thread. A marker may be created on one thread and destroyed on another.
 * All accesses to the counters are sequentially consistent.
 */
class TARNWICK_EXPORT ModificationLock
{
public:
    /** What is being modified. The values are part of the interface; other values must not be used. */
    enum LockType : qint32 {
        Data = 0, ///< The data.
        View = 1 ///< The presentation of the data.
    };

    /** Increments the counter of @p type. */
    explicit ModificationLock(LockType type);

    /** Decrements the counter of the type. */
    ~ModificationLock();

    ModificationLock(const ModificationLock &) = delete;
    ModificationLock &operator=(const ModificationLock &) = delete;

    /** Returns whether a marker of @p type exists in the process. Other threads may change this at any time. */
    static bool isLocked(LockType type);

private:
    static std::array<std::atomic<unsigned int>, 2> LOCK_COUNTS; // number of markers of each type

    const LockType type;
};

} // namespace utility

#endif
