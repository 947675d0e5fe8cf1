#ifndef TARNWICK_FOUNDATION_MODIFICATIONLOCK_H
#define TARNWICK_FOUNDATION_MODIFICATIONLOCK_H

#include <tarnwick_export.h>

#include <QtGlobal>

#include <array>
#include <atomic>

namespace utility {

/**
 * @brief Marks, while it is alive, that something must not be modified now.
 *
 * Blocks nobody: code that cares asks isLocked() and decides for itself. Markers of one type nest and overlap freely,
 * and the types are independent of each other.
 *
 * Threads: any operation on any thread; a marker may be destroyed on another thread than the one that made it. All
 * accesses are sequentially consistent.
 */
class TARNWICK_EXPORT ModificationLock
{
public:
    /** What a marker is about. The values are part of the interface; no operation tests for others. */
    enum LockType : qint32 {
        Data = 0, ///< The data must not change.
        View = 1 ///< The presentation must not change.
    };

    /** Raises the count of living markers of @p type. */
    explicit ModificationLock(LockType type);

    /** Lowers the count of living markers of the type. */
    ~ModificationLock();

    ModificationLock(const ModificationLock &) = delete;
    ModificationLock &operator=(const ModificationLock &) = delete;

    /** Returns whether a marker of @p type is alive anywhere in the process; this may change right after. */
    static bool isLocked(LockType type);

private:
    // living markers, indexed by their type
    static std::array<std::atomic<unsigned int>, 2> LOCK_COUNTS;

    const LockType type;
};

} // namespace utility

#endif
