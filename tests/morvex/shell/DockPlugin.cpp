// A plug-in like the product in everything but its panel, which is a row of line edits. For tests of
// a library's life with a panel in it.
#include "shell/MorvexPanel.h"
#include "shell/WinQtAE.h"

#include <QHBoxLayout>
#include <QLineEdit>

namespace {

class PlainPanel : public WinQtAE, public MorvexPanel
{
public:
    PlainPanel(SPBasicSuite *basicSuite, AEGP_PluginID id, AEGP_PanelH panel,
        AEGP_PlatformViewRef container, AEGP_PanelFunctions1 *functions)
        : WinQtAE(basicSuite, id, panel, container, functions)
    {
        auto *row = new QHBoxLayout(this);
        row->addWidget(new QLineEdit(this));
        row->addWidget(new QLineEdit(this));
    }

    void ScheduleRefresh() override { }
    void OnHostIdle() override { }
    AEGP_PanelRefcon Refcon() override { return PanelRefcon(); }
};

MorvexPanel *MakePlainPanel(SPBasicSuite *basicSuite, AEGP_PluginID id, AEGP_PanelH panel,
    AEGP_PlatformViewRef container, AEGP_PanelFunctions1 *functions)
{
    return new PlainPanel(basicSuite, id, panel, container, functions);
}

[[maybe_unused]] const bool isFactorySet = [] {
    SetMorvexPanelFactory(MakePlainPanel);
    return true;
}();

} // namespace
