#include "CDlgSearchReplace.h"

#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoMnemonics.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace {

QPushButton* NewButton(QWidget* parent, char const* objectName)
{
    auto* button = new QPushButton(parent);
    button->setObjectName(QString::fromLatin1(objectName));
    button->setAutoDefault(false);
    return button;
}

QLineEdit* NewEdit(QWidget* parent, char const* objectName)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(QString::fromLatin1(objectName));
    edit->setMinimumWidth(300);
    edit->setClearButtonEnabled(true);
    return edit;
}

} // namespace

CDlgSearchReplace::CDlgSearchReplace(QWidget* parent)
    : ZoDialog(parent)
{
    setModal(false);
    m_findLabel = new QLabel(this);
    m_find = NewEdit(this, "findEdit");
    m_findLabel->setBuddy(m_find);
    m_replaceLabel = new QLabel(this);
    m_replaceLabel->setObjectName(QStringLiteral("replaceLabel"));
    m_replace = NewEdit(this, "replaceEdit");
    m_replaceLabel->setBuddy(m_replace);
    m_matchCase = new QCheckBox(this);
    m_matchCase->setObjectName(QStringLiteral("matchCaseCheck"));

    m_findNext = NewButton(this, "findNextButton");
    m_findNext->setDefault(true);
    m_replaceButton = NewButton(this, "replaceButton");
    m_replaceAll = NewButton(this, "replaceAllButton");
    m_replaceModeButton = NewButton(this, "replaceModeButton");
    m_close = NewButton(this, "closeButton");

    auto* fields = new QGridLayout;
    fields->addWidget(m_findLabel, 0, 0);
    fields->addWidget(m_find, 0, 1);
    fields->addWidget(m_replaceLabel, 1, 0);
    fields->addWidget(m_replace, 1, 1);
    fields->addWidget(m_matchCase, 2, 0, 1, 2);
    fields->setRowStretch(3, 1);

    auto* buttons = new QVBoxLayout;
    for (QPushButton* button : {m_findNext, m_replaceButton, m_replaceAll, m_replaceModeButton, m_close})
        buttons->addWidget(button);
    buttons->addStretch(1);

    auto* layout = new QHBoxLayout(this);
    layout->addLayout(fields, 1);
    layout->addSpacing(8);
    layout->addLayout(buttons);
    // The window follows the controls shown: it grows with the replace row and shrinks back.
    layout->setSizeConstraint(QLayout::SetFixedSize);

    connect(m_findNext, &QPushButton::clicked, this, &CDlgSearchReplace::OnFindNext);
    connect(m_replaceButton, &QPushButton::clicked, this, &CDlgSearchReplace::OnReplace);
    connect(m_replaceAll, &QPushButton::clicked, this, &CDlgSearchReplace::OnReplaceAll);
    connect(m_replaceModeButton, &QPushButton::clicked, this, &CDlgSearchReplace::ShowReplace);
    auto* replaceKey = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_H), this);
    connect(replaceKey, &QShortcut::activated, this, &CDlgSearchReplace::ShowReplace);
    connect(m_close, &QPushButton::clicked, this, &QDialog::reject);

    EnsureInitialized();
    SetReplace(false);
}

CDlgSearchReplace::~CDlgSearchReplace() = default;

void CDlgSearchReplace::OnInitDialog()
{
    ZoMnemonics keys;
    keys.Reserve(QLatin1Char('h')); // Ctrl+H switches to replace mode
    keys.Set(m_findLabel, ZoText(63402));
    keys.Set(m_replaceLabel, ZoText(63403));
    keys.Set(m_matchCase, ZoText(63404));
    keys.Set(m_findNext, ZoText(63405));
    keys.Set(m_replaceButton, ZoText(34893));
    keys.Set(m_replaceAll, ZoText(63406));
    keys.Set(m_replaceModeButton, ZoText(63408));
    keys.Set(m_close, ZoText(63407));
    m_find->setToolTip(ZoText(63410));
    m_replace->setToolTip(ZoText(63411));
    UpdateTitle();
}

void CDlgSearchReplace::Present()
{
    show();
    raise();
    activateWindow();
    m_find->setFocus(Qt::OtherFocusReason);
    m_find->selectAll();
}

void CDlgSearchReplace::SetReplace(bool replace)
{
    m_replaceMode = replace;
    m_replaceLabel->setVisible(replace);
    m_replace->setVisible(replace);
    m_replaceButton->setVisible(replace);
    m_replaceAll->setVisible(replace);
    m_replaceModeButton->setVisible(!replace);
    UpdateTitle();
}

void CDlgSearchReplace::UpdateTitle()
{
    setWindowTitle(ZoText(m_replaceMode ? 63401 : 63400));
}

ZoSearchReplaceRequest CDlgSearchReplace::Request(wchar_t const* command) const
{
    ZoSearchReplaceRequest request;
    request.find = m_find->text().toStdWString();
    // A replacement goes with Replace and Replace All only: Find Next finds and nothing
    // more, and a replacement that the user cannot see is never sent.
    if (m_replaceMode && std::wstring_view(command) != ZoSearchReplaceRequest::kSearch)
        request.replace = m_replace->text().toStdWString();
    request.matchCase = m_matchCase->isChecked();
    request.command = command;
    return request;
}

void CDlgSearchReplace::Send(wchar_t const* command)
{
    emit SearchReplaceNotify(0, Request(command));
}

void CDlgSearchReplace::OnFindNext()
{
    Send(ZoSearchReplaceRequest::kSearch);
}

void CDlgSearchReplace::OnReplace()
{
    if (m_replaceMode)
        Send(ZoSearchReplaceRequest::kReplace);
}

void CDlgSearchReplace::OnReplaceAll()
{
    if (m_replaceMode)
        Send(ZoSearchReplaceRequest::kReplaceAll);
}

void CDlgSearchReplace::done(int result)
{
    bool const wasVisible = isVisible();
    ZoDialog::done(result);
    if (wasVisible)
        emit SearchReplaceNotify(1, ZoSearchReplaceRequest{});
}

void CDlgSearchReplace::showEvent(QShowEvent* event)
{
    ZoDialog::showEvent(event);
    m_find->setFocus(Qt::OtherFocusReason);
    m_find->selectAll();
}

void CDlgSearchReplace::ShowReplace()
{
    SetReplace(true);
    m_replace->setFocus(Qt::ShortcutFocusReason);
    m_replace->selectAll();
}
