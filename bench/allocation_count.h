#pragma once

// Allocations of the process so far, by operator new. (A DLL has its own: there only the program's
// own are counted.)
int CountAllocations();
