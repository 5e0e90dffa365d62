// Draws the graph, the tool box and the report page into PNG files, as the panel wears them: the dark
// palette, the plastique style, 8 points. For the eye; it tests nothing.
//
//     xvfb-run build/dev/bin/widget_shots FOLDER [style] [set]
#include "MemoryGraph.h"
#include "support/vnPalette.h"
#include "vnQT/wSendReportWidget.h"
#include "vnQT/wToolBox.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTest>
#include <QVBoxLayout>

namespace {

void Save(QWidget &widget, const QDir &folder, const QString &name)
{
    widget.show();
    QTest::qWait(50); // the window manager's word on the size
    widget.grab().save(folder.filePath(name + QStringLiteral(".png")));
}

/// Seven layers in the rhythm of the sheet's columns, three of them hanging from others.
void FillGraph(MemoryGraph &graph)
{
    graph.Add(1, 0, QPoint(0, 0), QStringLiteral("[Root]"));
    graph.Add(2, 1, QPoint(0, -36), QStringLiteral("titre"));
    graph.Add(3, 1, QPoint(48, -36), QStringLiteral("fx"));
    graph.Add(6, 1, QPoint(192, -36), QStringLiteral("corps_marche"));
    graph.Add(5, 6, QPoint(144, -72), QStringLiteral("tête"));
    graph.Add(4, 5, QPoint(96, -108), QStringLiteral("bouche"));
    graph.Add(7, 6, QPoint(240, -72), QStringLiteral("ombre"));
    graph.Add(8, 1, QPoint(288, -36), QStringLiteral("décor"));
    graph.current = 5;
}

void ShootGraph(const QDir &folder)
{
    MemoryGraph graph;
    graph.resize(640, 300);
    Save(graph, folder, QStringLiteral("graph_empty"));
    FillGraph(graph);
    Save(graph, folder, QStringLiteral("graph"));
    const QTransform view = graph.View();
    graph.SetView(QTransform::fromScale(0.5, 0.5) * view);
    Save(graph, folder, QStringLiteral("graph_half"));
    graph.SetView(QTransform::fromScale(4, 4) * QTransform::fromTranslate(-300, 400));
    Save(graph, folder, QStringLiteral("graph_four"));
    graph.SetView(QTransform().rotate(45) * view);
    Save(graph, folder, QStringLiteral("graph_turned"));
}

void ShootToolBox(const QDir &folder)
{
    WToolBox box;
    for (int i = 0; i < 3; ++i) {
        auto *content = new QLabel(QStringLiteral("content %1").arg(i));
        auto *check = i == 0 ? nullptr : new QCheckBox;
        if (check)
            check->setChecked(i == 1);
        box.AddItem(new ToolItem(QStringLiteral("Section %1").arg(i), content, check));
    }
    const QList<TitleItem *> titles = box.findChildren<TitleItem *>();
    titles[1]->SetOpen(true);
    box.resize(320, 160);
    Save(box, folder, QStringLiteral("toolbox"));
}

void ShootReport(const QDir &folder)
{
    QTabWidget dock;
    auto *report = new ReportWidget(&dock);
    dock.addTab(report, QStringLiteral("Board"));
    for (int i = 0; i < 6; ++i)
        report->efLog->append(QStringLiteral("morvex v1.0, line %1 of the log").arg(i));
    report->cbColorSet->setCurrentIndex(1);
    report->slColorRange->setValue(99);

    const QList<TitleItem *> titles = report->findChildren<TitleItem *>();
    dock.resize(640, 84);
    Save(dock, folder, QStringLiteral("report_closed"));
    dock.resize(640, 260);
    titles[0]->SetOpen(true);
    Save(dock, folder, QStringLiteral("report_log"));
    titles[0]->SetOpen(false);
    titles[1]->SetOpen(true);
    Save(dock, folder, QStringLiteral("report_settings"));
    titles[0]->SetOpen(true);
    dock.resize(400, 400);
    Save(dock, folder, QStringLiteral("report_both"));
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QDir folder(arguments.value(1, QStringLiteral(".")));
    folder.mkpath(QStringLiteral("."));
    QApplication::setStyle(QStyleFactory::create(arguments.value(2, QStringLiteral("plastique"))));
    QPalette colors = QApplication::palette();
    ApplyColorSet(colors, arguments.value(3, QStringLiteral("1")).toInt(), /*range=*/1.0);
    QApplication::setPalette(colors);
    QFont font = QApplication::font();
    font.setPointSize(8); // the panel's
    QApplication::setFont(font);

    ShootGraph(folder);
    ShootToolBox(folder);
    ShootReport(folder);
    return 0;
}
