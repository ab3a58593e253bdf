// The heap of the DLL's C runtime allocations (runtime_heap_win32.cpp).
#pragma once

namespace qvx::core {

/// Destroys the heap, with every block the runtime kept in it; the DLL's last act at unload.
/// Does nothing while the process is ending. Later frees are ignored, later allocations
/// come from the system's runtime.
void DestroyRuntimeHeap();

}  // namespace qvx::core
