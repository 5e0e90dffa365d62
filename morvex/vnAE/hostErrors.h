// The two error lines of checked calls, noted in the memory log with the caller's place.
//
//     if (VN_HOST_FAILED(suites.Item11()->AEGP_GetItemType(item, &type)))
//         return false; // "-ERR I- line %d, file(%s)" stands in the log
//     if (VN_FALSE(FindCompo()))
//         return false; // "-ERR B- line %d, file(%s)" stands in the log
#pragma once

#include "hostapi/HostTypes.h"

/// What the last checked call of the host answered. Nothing in the product reads it.
extern A_Err LastHostError;
/// What the last checked operation of our own answered. Nothing in the product reads it.
extern bool LastOwnResult;

/// True when the host's call failed: keeps the code and notes the line.
#define VN_HOST_FAILED(result) vnHostFailed((result), __LINE__, __FILE__)
/// True when an operation of our own answered false: keeps the answer and notes the line.
#define VN_FALSE(result) vnOwnFailed((result), __LINE__, __FILE__)

bool vnHostFailed(A_Err result, int line, const char *file);
bool vnOwnFailed(bool result, int line, const char *file);
