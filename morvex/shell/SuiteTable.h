// The host's published suites at this level of its interface: every pair of name and version that a
// suite handler knows. The order of the rows is the order in which a handler gives back what it
// holds.
#pragma once

#include <cstdint>

struct PublishedSuite
{
    const char *name;
    std::int32_t version; // as AcquireSuite takes it; not the number in the name of a table's type
};

inline constexpr PublishedSuite kPublishedSuites[] = {
    { "AE Plugin Helper Suite", 1 },
    { "AE Plugin Helper Suite2", 1 },
    { "AE Plugin Helper Suite2", 2 },
    { "AEGP Artisan Util Suite", 1 },
    { "AEGP Camera Suite", 1 },
    { "AEGP Camera Suite", 2 },
    { "AEGP Canvas Suite", 4 },
    { "AEGP Canvas Suite", 6 },
    { "AEGP Canvas Suite", 9 },
    { "AEGP Canvas Suite", 10 },
    { "AEGP Canvas Suite", 11 },
    { "AEGP Canvas Suite", 13 },
    { "AEGP Collection Suite", 1 },
    { "AEGP Collection Suite", 2 },
    { "AEGP Command Suite", 1 },
    { "AEGP Comp Suite", 4 },
    { "AEGP Comp Suite", 6 },
    { "AEGP Comp Suite", 7 },
    { "AEGP Comp Suite", 9 },
    { "AEGP Comp Suite", 11 },
    { "AEGP Comp Suite", 14 },
    { "AEGP Comp Suite", 15 },
    { "AEGP Comp Suite", 18 },
    { "AEGP Composite Suite", 4 },
    { "AEGP Dynamic Stream Suite", 1 },
    { "AEGP Dynamic Stream Suite", 2 },
    { "AEGP Dynamic Stream Suite", 3 },
    { "AEGP Dynamic Stream Suite", 5 },
    { "AEGP Effect Suite", 1 },
    { "AEGP Effect Suite", 2 },
    { "AEGP Effect Suite", 3 },
    { "AEGP File Import Manager Suite", 3 },
    { "AEGP Footage Suite", 11 },
    { "AEGP IO In Suite", 5 },
    { "AEGP IO Out Suite", 7 },
    { "AEGP Item Suite", 3 },
    { "AEGP Item Suite", 4 },
    { "AEGP Item Suite", 5 },
    { "AEGP Item Suite", 6 },
    { "AEGP Item Suite", 7 },
    { "AEGP Item Suite", 10 },
    { "AEGP Item Suite", 11 },
    { "AEGP Item Suite", 13 },
    { "AEGP Iterate Suite", 1 },
    { "AEGP Keyframe Suite", 1 },
    { "AEGP Keyframe Suite", 2 },
    { "AEGP Keyframe Suite", 3 },
    { "AEGP Keyframe Suite", 4 },
    { "AEGP Layer Mask Suite", 2 },
    { "AEGP Layer Mask Suite", 3 },
    { "AEGP Layer Mask Suite", 4 },
    { "AEGP Layer Mask Suite", 5 },
    { "AEGP Layer Mask Suite", 6 },
    { "AEGP Layer Suite", 5 },
    { "AEGP Layer Suite", 7 },
    { "AEGP Layer Suite", 8 },
    { "AEGP Layer Suite", 10 },
    { "AEGP Layer Suite", 11 },
    { "AEGP Layer Suite", 12 },
    { "AEGP Layer Suite", 13 },
    { "AEGP Light Suite", 1 },
    { "AEGP Light Suite", 2 },
    { "AEGP Marker Suite", 1 },
    { "AEGP Marker Suite", 2 },
    { "AEGP Mask Outline Suite", 2 },
    { "AEGP Mask Outline Suite", 3 },
    { "AEGP Mask Suite", 1 },
    { "AEGP Memory Suite", 1 },
    { "AEGP Output Module Suite", 4 },
    { "AEGP Persistent Data Suite", 3 },
    { "AEGP PF Interface Suite", 1 },
    { "AEGP Proj Suite", 8 },
    { "AEGP Proj Suite", 9 },
    { "AEGP QueryXform Suite", 1 },
    { "AEGP QueryXform Suite", 4 },
    { "AEGP Register Suite", 6 },
    { "AEGP Render Options Suite", 1 },
    { "AEGP Render Options Suite", 2 },
    { "AEGP Render Options Suite", 3 },
    { "AEGP Render Options Suite", 4 },
    { "AEGP Render Queue Item Suite", 1 },
    { "AEGP Render Queue Item Suite", 3 },
    { "AEGP Render Queue Item Suite", 4 },
    { "AEGP Render Queue Suite", 1 },
    { "AEGP Render Suite", 1 },
    { "AEGP Render Suite", 2 },
    { "AEGP Sound Data Suite", 1 },
    { "AEGP Stream Suite", 4 },
    { "AEGP Stream Suite", 7 },
    { "AEGP Stream Suite", 8 },
    { "AEGP Stream Suite", 9 },
    { "AEGP Text Document Suite", 1 },
    { "AEGP Text Layer Suite", 1 },
    { "AEGP Tracker Suite", 1 },
    { "AEGP Tracker Utility Suite", 1 },
    { "AEGP Utility Suite", 3 },
    { "AEGP Utility Suite", 5 },
    { "AEGP Utility Suite", 7 },
    { "AEGP Utility Suite", 10 },
    { "AEGP Utility Suite", 11 },
    { "AEGP Workspace Panel Suite", 1 },
    { "AEGP World Suite", 1 },
    { "AEGP World Suite", 2 },
    { "AEGP World Suite", 3 },
    { "DRAWBOT Draw Suite", 1 },
    { "DRAWBOT Path Suite", 1 },
    { "DRAWBOT Supplier Suite", 1 },
    { "DRAWBOT Surface Suite", 1 },
    { "PF AE Adv App Suite", 1 },
    { "PF AE Adv App Suite", 2 },
    { "PF AE Adv Item Suite", 1 },
    { "PF AE Adv Time Suite", 1 },
    { "PF AE Adv Time Suite", 2 },
    { "PF AE App Suite", 6 },
    { "PF AE Channel Suite", 1 },
    { "PF ANSI Suite", 1 },
    { "PF Batch Sampling Suite", 1 },
    { "PF Cache On Load Suite", 1 },
    { "PF Color Settings Suite", 1 },
    { "PF Color Settings Suite", 3 },
    { "PF Color Suite", 1 },
    { "PF Color16 Suite", 1 },
    { "PF ColorFloat Suite", 1 },
    { "PF ColorParamSuite", 1 },
    { "PF Effect Custom UI Overlay Theme Suite", 1 },
    { "PF Effect Custom UI Suite", 1 },
    { "PF Effect UI Suite", 1 },
    { "PF Fill Matte Suite", 2 },
    { "PF Handle Suite", 2 },
    { "PF iterate16 Suite", 1 },
    { "PF Iterate8 Suite", 1 },
    { "PF iterateFloat Suite", 1 },
    { "PF Param Utils Suite", 2 },
    { "PF Path Data Suite", 1 },
    { "PF Path Query Suite", 1 },
    { "PF Pixel Data Suite", 1 },
    { "PF Pixel Format Suite", 2 },
    { "PF PointParamSuite", 1 },
    { "PF Sampling16 Suite", 1 },
    { "PF Sampling8 Suite", 1 },
    { "PF SamplingFloat Suite", 1 },
    { "PF World Suite", 1 },
    { "PF World Suite", 2 },
    { "PF World Transform Suite", 1 },
};

inline constexpr int kPublishedSuiteCount
    = static_cast<int>(sizeof(kPublishedSuites) / sizeof(kPublishedSuites[0]));

/// @return the row of a pair in kPublishedSuites; -1 when it is not published
constexpr int SuitePlace(const char *name, std::int32_t version)
{
    for (int place = 0; place < kPublishedSuiteCount; ++place) {
        const PublishedSuite &suite = kPublishedSuites[place];
        const char *left = suite.name;
        const char *right = name;
        while (*left && *left == *right) {
            ++left;
            ++right;
        }
        if (*left == *right && suite.version == version)
            return place;
    }
    return -1;
}
