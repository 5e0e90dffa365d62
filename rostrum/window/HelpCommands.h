// The Help menu.
#pragma once

class QMenu;
class QWidget;

namespace rostrum {

void FillHelpMenu(QMenu *menu, QWidget *window);

} // namespace rostrum
