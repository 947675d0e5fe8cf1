#include "ModificationLock.h"

#include <cstddef>

using utility::ModificationLock;

// Initialised at compile time, so that static initialisers of clients can use the counters.
Q_CONSTINIT std::array<std::atomic<unsigned int>, 2> ModificationLock::LOCK_COUNTS = {{{0}, {0}}};

ModificationLock::ModificationLock(LockType type)
    : type(type)
{
    ++LOCK_COUNTS[static_cast<std::size_t>(type)];
}

ModificationLock::~ModificationLock()
{
    --LOCK_COUNTS[static_cast<std::size_t>(type)];
}

bool ModificationLock::isLocked(LockType type)
{
    return LOCK_COUNTS[static_cast<std::size_t>(type)] != 0;
}
