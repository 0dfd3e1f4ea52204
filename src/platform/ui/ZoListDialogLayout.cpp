#include "platform/ui/ZoListDialogLayout.h"

#include <QBoxLayout>
#include <QDialog>

void ZoLayoutListDialog(QDialog* dialog, QWidget* prompt, QWidget* list, std::initializer_list<QWidget*> commands,
                        QWidget* ok, QWidget* cancel)
{
    auto* buttons = new QVBoxLayout;
    for (QWidget* command : commands)
        buttons->addWidget(command);
    buttons->addStretch(1);

    auto* middle = new QHBoxLayout;
    middle->addWidget(list, 1);
    middle->addLayout(buttons);

    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(ok);
    bottom->addWidget(cancel);

    auto* main = new QVBoxLayout(dialog);
    main->addWidget(prompt);
    main->addLayout(middle, 1);
    main->addLayout(bottom);
}
