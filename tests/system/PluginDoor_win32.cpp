#include "PluginDoor.h"

#include "shell/EntryPoint.h"

QString testing::EnterMorvex(rostrum::HostDriver &driver)
{
    const A_Err error = driver.EnterPlugin(EntryPointFunc);
    return error ? QStringLiteral("it answered the error %1").arg(error) : QString();
}
