#include "ZoModal.h"

#include "platform/setup/ZoVelmoraSetup.h"

namespace {

ZoModalRunner& Runner()
{
    static ZoModalRunner runner;
    return runner;
}

} // namespace

ZoDialog::ZoDialog(QWidget* parent)
    : QDialog(parent)
{
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowIcon(ZoVelmoraSetup::instance().ProgramIcon());
}

int ZoDialog::DoModal()
{
    EnsureInitialized();
    return ZoRunModal(*this);
}

void ZoDialog::EnsureInitialized()
{
    if (m_initialized)
        return;
    // Set first: a dialog whose initialisation asks for itself again must not recurse.
    m_initialized = true;
    OnInitDialog();
}

int ZoRunModal(QDialog& dialog)
{
    // A copy, so that a runner may install another one (or none) while a dialog runs.
    ZoModalRunner const runner = Runner();
    if (runner)
        return runner(dialog);
    return dialog.exec();
}

void ZoSetModalRunner(ZoModalRunner runner)
{
    Runner() = std::move(runner);
}

ZoModalRunner ZoGetModalRunner()
{
    return Runner();
}
