#include "PluginDoor.h"

QString testing::EnterMorvex(rostrum::HostDriver &driver)
{
    return driver.LoadPlugin(QStringLiteral(VN_MORVEX));
}
