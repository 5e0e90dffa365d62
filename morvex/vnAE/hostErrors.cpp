#include "hostErrors.h"

#include "support/vnLog.h"

A_Err LastHostError = A_Err_NONE;
bool LastOwnResult = true;

bool vnHostFailed(A_Err result, int line, const char *file)
{
    LastHostError = result;
    if (result == A_Err_NONE)
        return false;
    vnLogErrorLine('I', line, file);
    return true;
}

bool vnOwnFailed(bool result, int line, const char *file)
{
    LastOwnResult = result;
    if (result)
        return false;
    vnLogErrorLine('B', line, file);
    return true;
}
