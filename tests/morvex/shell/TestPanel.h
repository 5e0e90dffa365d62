// A panel for tests of the docking: line edits in a row. It notes when it comes and goes.
#pragma once

#include "shell/WinQtAE.h"

#include <QHBoxLayout>
#include <QLineEdit>

namespace testing {

class TestPanel : public WinQtAE
{
public:
    TestPanel(
        SPBasicSuite *suite, nativeWindow::Handle container, AEGP_PanelFunctions1 *table, int count)
        : WinQtAE(suite, /*pluginId=*/21, /*panel=*/nullptr, container, table)
    {
        auto *row = new QHBoxLayout(this);
        for (int i = 0; i < count; ++i) {
            fields << new QLineEdit(this);
            fields.last()->setObjectName(QStringLiteral("field%1").arg(i));
            row->addWidget(fields.last());
        }
        setObjectName(QStringLiteral("panel"));
    }

    void OnResize() override
    {
        ++resizes;
        WinQtAE::OnResize();
    }

    QList<QLineEdit *> fields;
    int resizes = 0;
    int hides = 0;
    int shows = 0;

protected:
    void hideEvent(QHideEvent *) override { ++hides; }
    void showEvent(QShowEvent *) override { ++shows; }
};

} // namespace testing
