#include "ReferenceEditorsMenu.h"

#include "EditBaseView.h"
#include "reference/EditorScreen.h"
#include "reference/TFormEditBase.h"

#include <QMenu>

namespace kb::ui {

void addReferenceEditorsMenu(QMenu* menu, RecordServices& services, QWidget* parent)
{
    for (const EditorScreen& screen : referenceEditorScreens()) {
        if (screen.menuText.isEmpty()) continue;
        QAction* action = menu->addAction(screen.menuText);
        action->setObjectName(screen.formName);
        const QString formName = screen.formName;
        QObject::connect(action, &QAction::triggered, menu,
                         [formName, &services, parent] { showReferenceEditor(formName, services, parent); });
    }
}

bool showReferenceEditor(const QString& formName, RecordServices& services, QWidget* parent)
{
    const EditorScreen* screen = referenceEditorScreen(formName);
    if (!screen) return false;
    TFormEditBase presenter(services, *screen);
    if (!presenter.open()) return false;
    EditBaseView view(presenter, parent);
    view.exec();
    return true;
}

} // namespace kb::ui
