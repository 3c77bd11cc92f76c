// The interpreter's lock (GIL), released and taken so that threads outlive the interpreter's end. A thread that waits
// for the lock then would end by unwinding its stack, which no destructor survives.
#pragma once

#include "python/arrays.hpp"

namespace loopwise::python {

/// What the exit waits a moment for: work, and calls of Python from threads other than its own.
class Awaited {
  public:
    Awaited();
    ~Awaited();
    Awaited(const Awaited&) = delete;
    Awaited& operator=(const Awaited&) = delete;
};

/// Leaves the lock to others in its scope. Once the process exits, all threads but the one that exits stay in the
/// destructor for good.
class Unlocked {
  public:
    Unlocked() : state_(PyEval_SaveThread()) {}
    ~Unlocked();
    Unlocked(const Unlocked&) = delete;
    Unlocked& operator=(const Unlocked&) = delete;

  private:
    PyThreadState* state_;
};

/// Has the lock within the scope of an Unlocked. Once the process exits, other threads stay in the constructor.
class Locked {
  public:
    Locked();
    ~Locked();
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;

  private:
    PyGILState_STATE state_;
};

bool is_exiting();

/// For the thread that exits, before the interpreter ends: from now on other threads do not take the lock.
void begin_exit();

} // namespace loopwise::python
