/*
 * A model of the wake-up protocol that is described at the head of src/commands/CommandQueueThread.cpp. The tests search
 * all interleavings for
 *
 *   deadlock       a thread waits for a lock indefinitely
 *   lost           the worker sleeps although a command can be started, and the queue is not paused or was woken since
 *   undonePause    a run begins, which ends a pause, and nothing has woken the worker since that pause
 *   runsAfterStop  the worker begins another run after stop()
 *   endsEarly      the worker ends before a stop() has cancelled the listed commands
 *   staysAfterStop the worker still sleeps after stop()
 *
 * An inline has the name of the function that it models. Commands are three counts; the order of those that can be
 * started is not modelled. OPERATIONS operations of any kind are distributed over two clients and the running command. A
 * lock is true while it is held; nothing here takes one twice, so the lock of the queue is not recursive.
 *
 * Each of these macros selects a naive design instead, in which the search has to find the fault:
 *
 *   FLAG_WITHOUT_LOCK    a wake-up takes no lock                                          lost
 *   NOTIFY_UNDER_MUTEX   a wake-up takes the lock that stop() holds for its whole work    deadlock
 *   FLAG_THAT_STICKS     a wake-up is no more than a flag                                 undonePause
 *   LAST_WAKE_UP_KEPT    of two wake-ups the one stored last is kept, not the later one   lost
 *   END_AFTER_LAST_LOOK  a run's last look and the end of `processing` are two sections   lost
 *   STOP_READ_UNLOCKED   the worker reads stopRequested without the lock of stop()        endsEarly
 */

#ifndef OPERATIONS
#define OPERATIONS 3
#endif
#define NONE 255

/* CommandQueue */
bool queueMutex;
bool paused, processing;
byte pauseCount;
byte ready;   /* can be started; the current command is among them */
byte asking;  /* can be started, but requires user action */
byte waiting = 1; /* cannot be started */
bool current, currentCancelled;

/* CommandQueueThread */
bool mutex;
#ifdef NOTIFY_UNDER_MUTEX
#define wakeUpMutex mutex
#else
bool wakeUpMutex;
#endif
bool stopRequested;
byte pendingWakeUp = NONE;
bool asleep; /* on the condition variable */

/* Observed by the assertions */
bool wokenSincePause;
bool stopped; /* a stop() has cancelled everything */
bool ended;
bool deadlock, lost, undonePause, runsAfterStop, endsEarly, staysAfterStop;
byte operations = OPERATIONS;

/* Waits for a lock. A thread's first action under the lock is in the same atomic step: no other thread can tell. */
inline lock(held) { atomic { !held -> held = true } }
inline unlock(held) { held = false }
inline notify_one() { asleep = false }
inline markPaused() { pauseCount++; paused = true; wokenSincePause = false }

inline wakeUp() {
    atomic { count = pauseCount; wokenSincePause = true };
    atomic {
#ifndef FLAG_WITHOUT_LOCK
        lock(wakeUpMutex);
#endif
#ifdef LAST_WAKE_UP_KEPT
        pendingWakeUp = count;
#else
        pendingWakeUp = (pendingWakeUp == NONE || count > pendingWakeUp -> count : pendingWakeUp);
#endif
        count = 0
    };
#ifdef NOTIFY_UNDER_MUTEX
    notify_one();
    unlock(wakeUpMutex)
#else
#ifndef FLAG_WITHOUT_LOCK
    unlock(wakeUpMutex);
#endif
    notify_one()
#endif
}

/* CommandQueueThread::stop(), CommandQueue::cancelAll() */
inline stop() {
    atomic { lock(mutex); stopRequested = true };
    atomic {
        lock(queueMutex);
        markPaused();
        ready = current;
        asking = 0;
        waiting = 0;
        currentCancelled = current;
        stopped = true
    };
    unlock(queueMutex);
    unlock(mutex);
    wakeUp()
}

inline finishCommandAllowed() {
    atomic { lock(queueMutex); wasProcessing = processing };
    unlock(queueMutex);
    if
    :: wasProcessing
    :: else -> wakeUp()
    fi;
    wasProcessing = false
}

/* The next operation of a client or a command. The second variant of an add delivers commandAdded() later: it wakes the
   worker without the queue's lock. */
inline operation() {
    if
    :: atomic { lock(queueMutex); ready++ }; wakeUp(); unlock(queueMutex)
    :: atomic { lock(queueMutex); ready++ }; unlock(queueMutex); wakeUp()
    :: atomic { lock(queueMutex); asking++ }; wakeUp(); unlock(queueMutex)
    :: atomic { lock(queueMutex); asking++ }; unlock(queueMutex); wakeUp()
    :: atomic { asking > 0 -> asking--; ready++ }; wakeUp() /* the answer, then restart() */
    :: atomic { waiting > 0 -> waiting--; ready++ }; finishCommandAllowed()
    :: wakeUp() /* restart() */
    :: atomic { lock(queueMutex); markPaused() }; unlock(queueMutex) /* CommandQueue::pause() */
    :: atomic { lock(queueMutex); ready = ready - (ready > current) }; unlock(queueMutex) /* cancelCommand() */
    :: stop()
    fi
}

proctype client() {
    byte count;
    bool wasProcessing;
    do
    :: atomic { operations > 0 -> operations-- }; operation()
    :: break
    od
}

#ifdef FLAG_THAT_STICKS
#define isVoid(count) false
#else
#define isVoid(count) (count != pauseCount)
#endif

inline beginRun() {
    atomic {
        lock(queueMutex);
        going = !isVoid(known) && ready + asking > 0;
        known = 0;
        if
        :: going ->
            undonePause = !wokenSincePause;
            runsAfterStop = stopped && !first;
            assert(!undonePause);
            assert(!runsAfterStop);
            paused = false;
            processing = true
        :: else
        fi;
        first = false
    };
    unlock(queueMutex)
}

inline continueRun() {
    atomic {
        lock(queueMutex);
        going = ready + asking > 0 && !paused;
#ifndef END_AFTER_LAST_LOOK
        processing = going
#endif
    };
    unlock(queueMutex);
#ifdef END_AFTER_LAST_LOOK
    atomic { lock(queueMutex); processing = going };
    unlock(queueMutex)
#endif
}

/* CommandQueue::takeNextCommand(), Command::execute(), and the critical section that removes the command or keeps it */
inline startNextCommand() {
    atomic {
        lock(queueMutex);
        if
        :: paused || ready + asking == 0
        :: !paused && ready > 0 -> current = true
        :: !paused && asking > 0 -> markPaused(); processing = false
        fi
    };
    unlock(queueMutex);
    if
    :: !current
    :: current ->
        if
        :: skip
        :: atomic { operations > 0 -> operations-- }; operation()
        fi;
        atomic {
            lock(queueMutex);
            if
            :: ready--
            :: !currentCancelled /* unfinished */
            fi;
            current = false;
            currentCancelled = false
        };
        unlock(queueMutex)
    fi
}

inline waitForWakeUp() {
    lock(wakeUpMutex);
    do
    :: pendingWakeUp != NONE || stopRequested -> break
    :: else -> atomic { asleep = true; unlock(wakeUpMutex) }; atomic { !asleep; lock(wakeUpMutex) }
    od;
    atomic { known = pendingWakeUp; pendingWakeUp = NONE };
    unlock(wakeUpMutex);
#ifndef STOP_READ_UNLOCKED
    lock(mutex);
#endif
    known = (stopRequested -> NONE : known);
#ifndef STOP_READ_UNLOCKED
    unlock(mutex)
#endif
}

/* CommandQueueThread::run(), CommandQueue::processUnlessPausedSince() */
proctype worker() {
    byte known, count;
    bool going, wasProcessing, first = true;
    atomic { known = pauseCount; wokenSincePause = true };
    do
    :: known == NONE -> break
    :: else ->
        beginRun();
        do
        :: !going -> break
        :: else ->
            continueRun();
            if
            :: going -> startNextCommand()
            :: else
            fi
        od;
        waitForWakeUp()
    od;
    endsEarly = !stopped;
    assert(!endsEarly);
    ended = true
}

init {
    atomic { run worker(); run client(); run client() };
    /* Nothing can proceed: each client is done or waits indefinitely, the worker has ended, sleeps, or waits. */
    timeout;
    atomic {
        deadlock = mutex || queueMutex || wakeUpMutex;
        lost = !stopped && ready + asking > 0 && (wokenSincePause || !paused);
        staysAfterStop = stopped && !ended
    };
    assert(!deadlock);
    assert(!lost);
    assert(!staysAfterStop)
}
