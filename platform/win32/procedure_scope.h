#pragma once

namespace orv::platform::win32 {

/// A window procedure of ours is on this thread's stack. What it passes on (a turn of the wheel, a context menu)
/// reaches the container's windows, where anything may be done to the object that the procedure will go on with.
class ProcedureScope {
  public:
    ProcedureScope();
    ~ProcedureScope();
    ProcedureScope(const ProcedureScope&) = delete;
    ProcedureScope& operator=(const ProcedureScope&) = delete;
    static bool Running();
};

} // namespace orv::platform::win32
