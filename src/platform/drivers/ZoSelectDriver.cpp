#include "ZoSelectDriver.h"

#include "ZoDeviceCatalog.h"
#include "ZoDeviceTreePanel.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

ZoSelectDriver::WhereUsed& WhereUsedHandler()
{
    static ZoSelectDriver::WhereUsed handler;
    return handler;
}

} // namespace

void ZoSelectDriver::SetWhereUsed(WhereUsed show)
{
    WhereUsedHandler() = std::move(show);
}

ZoSelectDriver::ZoSelectDriver(QWidget* parent, Mode mode, ZoTypeSet const& mask, bool writableOnly,
                               ZoDeviceCatalog const* catalog)
    : ZoDialog(parent)
    , m_mode(mode)
    , m_mask(mask)
    , m_writableOnly(writableOnly)
    , m_catalog(catalog ? catalog : ZoDeviceCatalog::Installed())
{
}

bool ZoSelectDriver::Select(QWidget* parent, ZoBasicString<wchar_t>& deviceName)
{
    ZoSelectDriver chooser(parent, Mode::Device);
    chooser.SetInitial(deviceName);
    if (chooser.DoModal() != QDialog::Accepted)
        return false;
    deviceName = chooser.Chosen();
    return true;
}

bool ZoSelectDriver::SelectDriverAndVar(QWidget* parent, ZoBasicString<wchar_t>& variableName,
                                        ZoTypeSet const& mask, bool writableOnly)
{
    ZoSelectDriver chooser(parent, Mode::Variable, mask, writableOnly);
    chooser.SetInitial(variableName);
    if (chooser.DoModal() != QDialog::Accepted)
        return false;
    variableName = chooser.Chosen();
    return true;
}

void ZoSelectDriver::OnInitDialog()
{
    bool const variables = m_mode == Mode::Variable;
    setWindowTitle(ZoText(variables ? 62101 : 62100));
    setWindowIcon(ZoImageIcon(L"PROGRAM-16.png"));
    setSizeGripEnabled(true);

    ZoMnemonics mnemonics;
    auto* model = new ZoDeviceTreeModel(m_catalog, variables ? ZoDeviceTreeModel::Mode::Variables
                                                             : ZoDeviceTreeModel::Mode::Devices,
                                        m_mask, m_writableOnly);
    auto* buttons = new QDialogButtonBox(this);
    m_ok = buttons->addButton(QString(), QDialogButtonBox::AcceptRole);
    m_ok->setObjectName(QStringLiteral("okButton"));
    m_ok->setIcon(ZoImageIcon(L"OK-16.png"));
    m_ok->setDefault(true);
    QPushButton* cancel = buttons->addButton(QString(), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("cancelButton"));
    cancel->setIcon(ZoImageIcon(L"CANCEL-16.png"));
    if (WhereUsedHandler()) {
        m_whereUsed = buttons->addButton(QString(), QDialogButtonBox::ActionRole);
        m_whereUsed->setObjectName(QStringLiteral("whereUsedButton"));
        m_whereUsed->setAutoDefault(false);
        mnemonics.Set(m_whereUsed, ZoText(64769));
        // A variable as formulas write it; a device by its prefix, since its name alone may
        // look like a variable ("Line 2.A").
        connect(m_whereUsed, &QPushButton::clicked, this, [this] {
            QString const chosen = m_panel->ChosenReference();
            if (!chosen.isEmpty() && WhereUsedHandler())
                WhereUsedHandler()(this, m_mode == Mode::Variable ? "[" + chosen + "]" : "device:" + chosen);
        });
    }
    mnemonics.Set(m_ok, ZoText(311));
    mnemonics.Set(cancel, ZoText(312));
    m_panel = new ZoDeviceTreePanel(this, model, mnemonics, variables ? 62104 : 62105);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_panel, 1);
    layout->addWidget(buttons);
    resize(720, 520);

    connect(m_panel, &ZoDeviceTreePanel::Chosen, this, &ZoSelectDriver::accept);
    connect(m_panel, &ZoDeviceTreePanel::CurrentChanged, this, &ZoSelectDriver::UpdateButtons);
    connect(m_ok, &QPushButton::clicked, this, &ZoSelectDriver::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    if (!m_initial.empty())
        m_panel->Select(QString::fromStdWString(m_initial));
    m_panel->FilterEdit()->setFocus();
    UpdateButtons();
}

void ZoSelectDriver::accept()
{
    QString const chosen = m_panel ? m_panel->ChosenReference() : QString();
    if (chosen.isEmpty())
        return;
    m_chosen = chosen.toStdWString();
    QDialog::accept();
}

void ZoSelectDriver::UpdateButtons()
{
    bool const chosen = !m_panel->ChosenReference().isEmpty();
    m_ok->setEnabled(chosen);
    if (m_whereUsed)
        m_whereUsed->setEnabled(chosen);
}
