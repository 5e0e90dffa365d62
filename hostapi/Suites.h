// All tables of the host that this system knows, one header a suite.
#pragma once

#include "hostapi/suites/AppSuite.h"
#include "hostapi/suites/CollectionSuite.h"
#include "hostapi/suites/CommandSuite.h"
#include "hostapi/suites/CompSuite.h"
#include "hostapi/suites/EffectSuite.h"
#include "hostapi/suites/FootageSuite.h"
#include "hostapi/suites/ItemSuite.h"
#include "hostapi/suites/KeyframeSuite.h"
#include "hostapi/suites/LayerSuite.h"
#include "hostapi/suites/MemorySuite.h"
#include "hostapi/suites/ProjSuite.h"
#include "hostapi/suites/RegisterSuite.h"
#include "hostapi/suites/StreamSuite.h"
#include "hostapi/suites/UtilitySuite.h"
#include "hostapi/suites/WorkspacePanelSuite.h"
