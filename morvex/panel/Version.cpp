#include "Version.h"

const char *Version::Name()
{
    return "morvex v1.0";
}

const char *Version::BuildDate()
{
    return __DATE__;
}

const char *Version::BuildTime()
{
    return __TIME__;
}

const char *Version::GuideAddress()
{
    return VN_GUIDE_ADDRESS;
}
