// Draws every kind of editor, and the document's dock tab by tab, into PNG files, as the panel wears
// them: the dark palette, the plastique style, 8 points. For the eye; it tests nothing.
//
//     xvfb-run build/dev/tests/editor_shots FOLDER [style] [range]
#include "T_Types/T_QtEdit.h"
#include "T_Types/T_QtEditTab.h"
#include "panel/Doc.h"
#include "support/vnPalette.h"

#include <QApplication>
#include <QDebug>
#include <QDir>
#include <QStyleFactory>
#include <QTransform>
#include <QVector2D>
#include <QVector3D>

namespace {

/// One variable of each type and gadget.
class Everything : public T_Struct
{
public:
    Everything()
    {
        SetName(QStringLiteral("Everything"));
        AddBool(&flag, QStringLiteral("bool"), TG_DEFAULT);
        flag = true;
        AddInt(&whole, QStringLiteral("int"), TG_DEFAULT);
        whole = -100000;
        AddInt(&percent, QStringLiteral("slider"), TG_SLIDER);
        percent = 40;
        AddEnum(&choice, QStringLiteral("combo"), TG_COMBO, &items);
        AddVar(TV_FLOAT, QStringLiteral("float"), &narrow, TG_DEFAULT);
        AddVar(TV_DOUBLE, QStringLiteral("double, row 2"), &wide, 2);
        AddQString(&text, QStringLiteral("text"), TG_DEFAULT);
        AddQString(&choiceText, QStringLiteral("edit combo"), TG_EDITCOMBO);
        AddButton(&button, QStringLiteral("button"));
        AddVar(TV_COLOR, QStringLiteral("colour"), &color, 4);
        AddVar(TV_QVECTOR2D, QStringLiteral("2D"), &two, TG_DEFAULT);
        AddVar(TV_QVECTOR3D, QStringLiteral("3D"), &three, TG_DEFAULT);
        AddVar(TV_QTRANSFORM, QStringLiteral("transform"), &transform, TG_DEFAULT);
        AddVar(TV_SHORT, QStringLiteral("no input"), &small, TG_DEFAULT);
        AddVar(TV_INT, QStringLiteral("disabled"), &other, TG_DEFAULT)->mFlags
            &= static_cast<quint8>(~T_FLAG_ENABLE);
        AddVar(TV_ONGLET, QStringLiteral("2"), nullptr, TG_GROUP);
        AddBool(&left, QStringLiteral("left"), TG_DEFAULT);
        AddBool(&right, QStringLiteral("right"), TG_DEFAULT);
    }
    QStringList GetEditList(QString *) override { return items; }

private:
    bool flag = false, button = false, left = false, right = false;
    int whole = 0, percent = 0, choice = 0, other = 12;
    float narrow = 12.5f;
    double wide = 99.25;
    qint16 small = 0;
    quint32 color = 0xFF2080C0;
    QString text{ QStringLiteral("walk cycle") }, choiceText{ QStringLiteral("tga") };
    QVector2D two{ -10000, 120 };
    QVector3D three{ 1, -2000, 300 };
    QTransform transform{ 1.5, 0, 0, 1.5, 1200, -340 };
    QStringList items{ QStringLiteral("png"), QStringLiteral("tga") };
};

void Save(QWidget &widget, const QDir &folder, const QString &name)
{
    QCoreApplication::processEvents();
    const QString path = folder.filePath(name + QStringLiteral(".png"));
    if (!widget.grab().save(path))
        qWarning() << "cannot write" << path;
}

QFont PanelFont()
{
    QFont font = QApplication::font();
    font.setPointSize(8);
    return font;
}

void SaveEveryEditor(const QDir &folder)
{
    Everything everything;
    KDockPannel dock(nullptr, /*rows=*/6);
    dock.setFont(PanelFont());
    dock.SetStructs(&everything);
    dock.resize(900, dock.height());
    dock.show();
    Save(dock, folder, QStringLiteral("editors"));
    dock.widget(0)->setEnabled(false);
    Save(dock, folder, QStringLiteral("editors_disabled"));

    // A dock's editors have 200 pixels at most, too few for the four boxes of a transform.
    T_QtEdit alone(nullptr, everything.GetVar(QStringLiteral("transform"), TV_QTRANSFORM));
    alone.setFont(PanelFont());
    alone.show();
    Save(alone, folder, QStringLiteral("transform_alone"));
}

/// Tab by tab, and then as it stands without a composition.
void SaveDocument(const QDir &folder)
{
    Doc doc;
    KDockPannel dock(nullptr, /*rows=*/2);
    dock.setFont(PanelFont());
    dock.SetStructs(&doc);
    doc.posX = -1234;
    doc.posY = 100000;
    doc.keyScale = true;
    doc.name = QStringLiteral("walk");
    dock.UpdateAll();
    dock.resize(830, dock.height());
    dock.show();
    for (int tab = 0; tab < dock.count(); ++tab) {
        dock.setCurrentIndex(tab);
        Save(dock, folder, QStringLiteral("doc_") + dock.tabText(tab));
    }
    for (int tab = 0; tab < 4; ++tab)
        dock.setTabEnabled(tab, false);
    Save(dock, folder, QStringLiteral("doc_without_composition"));
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    const QDir folder(arguments.value(1, QStringLiteral(".")));
    QPalette palette = QApplication::palette();
    ApplyColorSet(palette, /*set=*/1, arguments.value(3, QStringLiteral("1.0")).toDouble());
    QApplication::setPalette(palette);
    QApplication::setStyle(QStyleFactory::create(arguments.value(2, QStringLiteral("plastique"))));
    SaveEveryEditor(folder);
    SaveDocument(folder);
    return 0;
}
