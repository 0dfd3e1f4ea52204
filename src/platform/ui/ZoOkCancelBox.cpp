#include "platform/ui/ZoOkCancelBox.h"

#include "platform/ui/ZoIcons.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>

QDialogButtonBox* ZoNewOkCancelBox(QWidget* parent, QPushButton*& ok, QPushButton*& cancel)
{
    ok = new QPushButton(ZoImageIcon(L"OK-16.png"), QString(), parent);
    ok->setObjectName(QStringLiteral("okButton"));
    ok->setDefault(true);
    cancel = new QPushButton(ZoImageIcon(L"CANCEL-16.png"), QString(), parent);
    cancel->setObjectName(QStringLiteral("cancelButton"));
    auto* box = new QDialogButtonBox(parent);
    box->addButton(ok, QDialogButtonBox::AcceptRole);
    box->addButton(cancel, QDialogButtonBox::RejectRole);
    return box;
}

QDialogButtonBox* ZoNewDialogButtons(QDialog* dialog, QPushButton*& ok, QPushButton*& cancel)
{
    QDialogButtonBox* box = ZoNewOkCancelBox(dialog, ok, cancel);
    QObject::connect(ok, &QPushButton::clicked, dialog, &QDialog::accept);
    QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
    return box;
}
