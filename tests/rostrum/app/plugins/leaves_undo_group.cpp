// Opens an undo group at each idle call and leaves it open.
#include "PluginKit.h"

namespace {

A_Err OnIdle(AEGP_GlobalRefcon, AEGP_IdleRefcon, A_long *)
{
    return plugin::Suite<AEGP_UtilitySuite5>()->AEGP_StartUndoGroup("half done");
}

} // namespace

A_Err plugin::Enter()
{
    return RegisterIdle(OnIdle);
}
