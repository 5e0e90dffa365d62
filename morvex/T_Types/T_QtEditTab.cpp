#include "T_Types/T_QtEditTab.h"

#include "T_Types/T_QtEdit.h"
#include "T_Types/T_Struct.h"
#include "T_Types/T_Var.h"

#include <QDebug>
#include <QGridLayout>
#include <QHBoxLayout>

#include <algorithm>

namespace {

constexpr int kRowHeight = 42; // pixels of the panel's height for each row
constexpr int kExtraTabHeight = 840; // pixels; the most that a client's tab may take
constexpr int kEditorWidth = 200; // pixels; the most
constexpr int kColumnSpacing = 48; // pixels between columns
// With these, two rows of editors at 8 points fit the fixed height of a panel of two rows.
constexpr int kPageMargin = 2; // pixels
constexpr int kRowSpacing = 2; // pixels

bool IsMarker(const T_Var *var, quint32 gadget)
{
    return var->mType == TV_ONGLET && var->mGadget == gadget;
}

} // namespace

/// Where a build stands. It runs on over all structures: a structure that begins no tab of its own
/// goes on in the tab of the one before.
struct KDockPannel::Build
{
    ~Build() { DropGroup(); }

    /// Pushes the columns to the left.
    void AddSpacer()
    {
        if (grid)
            grid->addItem(new QSpacerItem(0, 0, QSizePolicy::Expanding, QSizePolicy::Expanding),
                /*row=*/0, column + 1, /*rowSpan=*/1, /*columnSpan=*/1);
    }

    /// Puts the group into the grid's next cell, whatever is in it.
    void PlaceGroup()
    {
        grid->addLayout(group, row, column);
        group = nullptr;
        left = -1;
        ++row;
    }

    /// A group that never got all its editors stays out of the grid, and so do these. The page
    /// takes it over only here: a layout that waits has to be without a parent to be placed.
    void DropGroup()
    {
        if (group)
            group->setParent(page);
        group = nullptr;
    }

    int tabCount = 0;
    QWidget *page = nullptr;
    QGridLayout *grid = nullptr;
    int row = 0, column = 0;
    int left = -1; // editors that the group still waits for; -1 when there is no group
    QHBoxLayout *group = nullptr;
};

KDockPannel::KDockPannel(QWidget *parent, int rows)
    : QTabWidget(parent), mTabWidget(this), mRows(rows)
{
    setFixedHeight(rows * kRowHeight);
    connect(this, &QTabWidget::currentChanged, this, &KDockPannel::OnTabChanged);
}

KDockPannel::~KDockPannel()
{
    qDeleteAll(mExtraTabs);
}

void KDockPannel::AddExtraTab(QWidget *page, const QString &title)
{
    mExtraTabs << new ExtraTab{ page, title };
}

void KDockPannel::SetStructs(T_Struct *s0, T_Struct *s1, T_Struct *s2, T_Struct *s3, T_Struct *s4,
    T_Struct *s5, T_Struct *s6)
{
    SetStructs(QList<T_Struct *>{ s0, s1, s2, s3, s4, s5, s6 });
}

void KDockPannel::SetStructs(QList<T_Struct *> list)
{
    list.removeAll(nullptr);
    if (list == mStructs)
        return;
    const int index = currentIndex();
    mStructs = list;
    Rebuild();
    setCurrentIndex(qMin(index, count() - 1));
}

void KDockPannel::UpdateAll()
{
    OnUpdate(/*level=*/2, /*skipField=*/nullptr);
}

void KDockPannel::OnUpdate(int, const void *skipField)
{
    const QList<T_QtEdit *> editors = mEditors; // a client may rebuild from within an echo
    for (T_QtEdit *editor : editors) {
        const T_Var *var = editor->GetVar();
        if (var->mData == skipField)
            qWarning() << "TabEdit::OnUpdate SKIP " << var->GetName();
        else
            editor->ValToIhm();
    }
}

/// A client's tab may grow; a generated one keeps the fixed height. The lower bound stays.
void KDockPannel::OnTabChanged(int)
{
    setMaximumHeight(IsExtraTab(currentWidget()) ? kExtraTabHeight : mRows * kRowHeight);
}

void KDockPannel::SlotSpinEditChanged(T_Var *var)
{
    if (var->mType == TV_BOUTON) {
        if (var->mParent && var->mParent->IsStruct())
            static_cast<T_Struct *>(var->mParent)->OnButtonClicked(var->mData);
        emit SignalButtonClicked(var);
    }
    emit SignalValueChanged(var);
}

void KDockPannel::Rebuild()
{
    ClearPages();
    Build build;
    for (T_Struct *structure : qAsConst(mStructs)) {
        if (!structure)
            break;
        AddStruct(build, structure);
        build.AddSpacer();
    }
    for (const ExtraTab *tab : qAsConst(mExtraTabs)) {
        if (tab->page)
            mTabWidget->addTab(tab->page, tab->title);
    }
}

/// What was on show is kept until the next build: the call may come from one of its editors.
void KDockPannel::ClearPages()
{
    while (!mOldEditors.isEmpty())
        delete mOldEditors.takeFirst();
    while (!mOldPages.isEmpty())
        delete mOldPages.takeFirst();

    mOldEditors += mEditors;
    mEditors.clear();
    for (int tab = mTabWidget->count() - 1; tab >= 0; --tab) {
        mOldPages << mTabWidget->widget(tab);
        mTabWidget->removeTab(tab);
    }
}

/// Arrays and child structures are not shown, only plain variables.
void KDockPannel::AddStruct(Build &build, T_Struct *structure)
{
    structure->Rewind();
    while (T_Var *var = structure->NextVar()) {
        if (!(var->mFlags & T_FLAG_SHOW))
            continue;
        if (IsMarker(var, TG_TAB))
            BeginPage(build, var->GetName());
        else if (build.tabCount == 0)
            BeginPage(build, structure->GetName());
        if (IsMarker(var, TG_GROUP))
            BeginGroup(build, var->GetName());
        if (IsMarker(var, TG_COLUMN) && build.row != 0) {
            build.row = 0;
            ++build.column;
        }
        if (var->mType != TV_ONGLET && var->mType != TV_NULL) // no other is shown by an editor
            AddEditor(build, var);
    }
}

void KDockPannel::BeginPage(Build &build, const QString &title)
{
    build.AddSpacer();
    build.DropGroup();
    build.row = 0;
    build.column = 0;
    build.left = -1;

    build.page = new QWidget;
    build.grid = new QGridLayout(build.page);
    build.grid->setContentsMargins(kPageMargin, kPageMargin, kPageMargin, kPageMargin);
    build.grid->setVerticalSpacing(kRowSpacing);
    build.grid->setHorizontalSpacing(kColumnSpacing);
    mTabWidget->addTab(build.page, title);
    ++build.tabCount;
}

/// @param size the number of editors, as text; what is no number counts as 0, and the group then
/// takes a cell with nothing in it
void KDockPannel::BeginGroup(Build &build, const QString &size)
{
    build.DropGroup();
    build.left = size.toInt();
    build.group = new QHBoxLayout;
}

void KDockPannel::AddEditor(Build &build, T_Var *var)
{
    auto *editor = new T_QtEdit(build.page, var);
    editor->setMaximumWidth(kEditorWidth);
    if (build.left > 0) {
        build.group->addWidget(editor);
        --build.left;
    }
    if (build.left == 0)
        build.PlaceGroup();
    else if (build.left < 0)
        build.grid->addWidget(editor, build.row++, build.column);
    if (build.row >= mRows) {
        build.row = 0;
        ++build.column;
    }

    connect(editor, &T_QtEdit::SignalValueChanged, this, &KDockPannel::SlotSpinEditChanged);
    mEditors << editor;
    editor->SetEditEnabled(var->mFlags & T_FLAG_ENABLE);
}

bool KDockPannel::IsExtraTab(const QWidget *page) const
{
    return page && std::any_of(mExtraTabs.begin(), mExtraTabs.end(), [page](const ExtraTab *tab) {
        return tab->page == page;
    });
}
