#include "ReferenceEditorsMenu.h"

#include "EditBaseView.h"
#include "reference/EditorScreen.h"
#include "reference/TFormEditBase.h"


namespace kb::ui {

bool showReferenceEditor(const QString& formName, RecordServices& services, QWidget* parent, SettingsFile* settings)
{
    const EditorScreen* screen = referenceEditorScreen(formName);
    if (!screen) return false;
    TFormEditBase presenter(services, *screen);
    if (!presenter.open()) return false;
    EditBaseView view(presenter, parent, settings);
    view.exec();
    return true;
}

} // namespace kb::ui
