#include "platform/win32/procedure_scope.h"

namespace orv::platform::win32 {
namespace {

thread_local int depth = 0;

} // namespace

ProcedureScope::ProcedureScope() {
    ++depth;
}

ProcedureScope::~ProcedureScope() {
    --depth;
}

bool ProcedureScope::Running() {
    return depth > 0;
}

} // namespace orv::platform::win32
