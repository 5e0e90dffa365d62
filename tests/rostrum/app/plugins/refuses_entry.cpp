// Acquires a suite, and answers an error from its entry point.
#include "PluginKit.h"

A_Err plugin::Enter()
{
    Acquire<AEGP_MemorySuite1>();
    return A_Err_ALLOC;
}
