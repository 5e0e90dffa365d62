// KDockPannel: a tab widget that makes its own editors from the variables of one or more
// structures. It knows no field of them.
//
// The variables are taken in the order of their chains. An editor is a cell of a grid of mRows
// rows; cells fill a column from the top, then the next column to the right. Markers (variables of
// type TV_ONGLET) lay the grid out, by their gadget:
//
//     TG_TAB      a new tab, titled with the marker's name
//     TG_COLUMN   a new column, unless one has just begun
//     TG_GROUP    the marker's name is a number n: the next n editors share one cell, side by side
//
// Editors that come before any tab get one that is titled with the structure's name. The tabs that
// the client brought stand behind the generated ones.
#pragma once

#include <QList>
#include <QPointer>
#include <QTabWidget>

class T_QtEdit;
class T_Struct;
class T_Var;

class KDockPannel : public QTabWidget
{
    Q_OBJECT

public:
    /// @param rows editors in a column; each row is 42 pixels of the panel's fixed height
    KDockPannel(QWidget *parent, int rows);
    ~KDockPannel() override;

    /// Adds a tab of the client's own. It appears at the next build, so this comes before
    /// SetStructs. The page stays with the client, but is among the tabs' children while it shows.
    /// A panel with such a tab can be built twice; the third build deletes the page.
    void AddExtraTab(QWidget *page, const QString &title);

    /// Shows these structures, in this order; null ones are left out. The structures that are shown
    /// already are not built again. None is owned; each must outlive its editors, which are kept
    /// alive for one build more.
    void SetStructs(T_Struct *s0, T_Struct *s1 = nullptr, T_Struct *s2 = nullptr,
        T_Struct *s3 = nullptr, T_Struct *s4 = nullptr, T_Struct *s5 = nullptr,
        T_Struct *s6 = nullptr);
    void SetStructs(QList<T_Struct *> list);

    /// Shows the present values in all editors.
    void UpdateAll();
    /// Shows the present values, but leaves the editors of one field alone and notes each of them
    /// in the Qt messages. A null field stands for the variables without data.
    /// @param level not looked at
    void OnUpdate(int level, const void *skipField);

signals:
    void SignalValueChanged(T_Var *var);
    void SignalButtonClicked(T_Var *var);

public slots:
    void OnTabChanged(int tab);
    void SlotSpinEditChanged(T_Var *var);

private:
    struct ExtraTab
    {
        QPointer<QWidget> page;
        QString title;
    };
    struct Build;

    void Rebuild();
    void ClearPages();
    void AddStruct(Build &build, T_Struct *structure);
    void BeginPage(Build &build, const QString &title);
    void BeginGroup(Build &build, const QString &size);
    void AddEditor(Build &build, T_Var *var);
    bool IsExtraTab(const QWidget *page) const;

    QTabWidget *mTabWidget = nullptr; // where generated tabs go: this object
    QList<T_Struct *> mStructs;
    int mRows = 0;
    QList<T_QtEdit *> mEditors;
    QList<T_QtEdit *> mOldEditors; // of the build before, still alive for whoever is in their midst
    QList<QWidget *> mOldPages;
    QList<ExtraTab *> mExtraTabs;
};
