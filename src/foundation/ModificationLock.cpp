#include "ModificationLock.h"

namespace utility {

// Initialised at compile time, so that static initialisers of clients, in whatever order, find the counters in place.
Q_CONSTINIT std::array<std::atomic<unsigned int>, 2> ModificationLock::LOCK_COUNTS = {{{0}, {0}}};

ModificationLock::ModificationLock(LockType type)
    : type(type)
{
    ++LOCK_COUNTS[std::size_t(type)];
}

ModificationLock::~ModificationLock()
{
    --LOCK_COUNTS[std::size_t(type)];
}

bool ModificationLock::isLocked(LockType type)
{
    return LOCK_COUNTS[std::size_t(type)] != 0;
}

} // namespace utility
