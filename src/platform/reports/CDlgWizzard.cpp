#include "CDlgWizzard.h"

#include "ZoFormulaInsertion.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/drivers/ZoDeviceTreePanel.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QStyle>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <map>

namespace {

// What the wizard remembers of each calling context for the session.
struct ContextMemory {
    QSize size;
    QByteArray splitter;
    QString lastVariable;
};

std::map<int, ContextMemory>& Memories()
{
    static std::map<int, ContextMemory> memories;
    return memories;
}

QString OneLine(QString text)
{
    for (QChar const lineBreak : {QChar(u'\n'), QChar(u'\r'), QChar(QChar::LineSeparator), QChar(QChar::ParagraphSeparator)})
        text.replace(lineBreak, QLatin1Char(' '));
    return text.trimmed();
}

ZoFormulaFunction const* FindFunction(QString const& name)
{
    for (ZoFormulaFunction const& function : ZoWizardFunctions())
        if (function.name.compare(name, Qt::CaseInsensitive) == 0)
            return &function;
    return nullptr;
}

ZoFormulaOperator const* FindOperator(QString const& text)
{
    for (ZoFormulaOperator const& op : ZoWizardOperators())
        if (op.text == text)
            return &op;
    return nullptr;
}

QPixmap SeverityPixmap(ZoWizardStatus::Severity severity)
{
    QStyle::StandardPixmap const which = severity == ZoWizardStatus::Severity::Ok ? QStyle::SP_DialogApplyButton
        : severity == ZoWizardStatus::Severity::Note                              ? QStyle::SP_MessageBoxInformation
                                                                                  : QStyle::SP_MessageBoxCritical;
    return QApplication::style()->standardIcon(which).pixmap(16, 16);
}

} // namespace

CDlgWizzard::CDlgWizzard(QWidget* parent, std::bitset<34> const& kinds, bool writeTarget, int context)
    : ZoDialog(parent)
    , m_kinds(kinds)
    , m_writeTarget(writeTarget)
    , m_context(context)
    , m_evaluator(std::make_unique<ZoEvaluator>())
{
}

CDlgWizzard::~CDlgWizzard() = default;

ZoTypeSet CDlgWizzard::OfferedTypes(std::bitset<34> const& kinds)
{
    ZoTypeSet offered = kinds;
    if (kinds.test(kZoAnalog))
        offered |= ZoTypeOf(kZoDigital) | ZoTypeOf(kZoInteger) | ZoTypeOf(kZoCounter) | ZoTypeOf(kZoDuration);
    if (kinds.test(kZoInteger))
        offered |= ZoTypeOf(kZoDigital) | ZoTypeOf(kZoDuration);
    return offered;
}

void CDlgWizzard::SetExpression(ZoBasicString<wchar_t> const& text, int selStart, int selEnd)
{
    m_initial = text;
    int const size = static_cast<int>(QString::fromStdWString(text).size());
    m_initialStart = selStart < 0 ? size : std::min(selStart, size);
    m_initialEnd = selStart < 0 || selEnd < 0 ? size : std::min(selEnd, size);
    if (m_expression) {
        m_expression->setPlainText(QString::fromStdWString(text));
        QTextCursor cursor = m_expression->textCursor();
        cursor.setPosition(m_initialStart);
        cursor.setPosition(m_initialEnd, QTextCursor::KeepAnchor);
        m_expression->setTextCursor(cursor);
    }
}

void CDlgWizzard::OnInitDialog()
{
    setWindowTitle(ZoText(62200));
    setWindowIcon(ZoImageIcon(L"WIZARD-16.png"));
    setSizeGripEnabled(true);
    if (m_writeTarget)
        m_expect = ZoWizardStatus::Expect::WriteTarget;
    if (m_catalog)
        m_evaluator->SetCatalog(m_catalog);
    ZoMnemonics mnemonics;

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* ok = buttons->addButton(QString(), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("okButton"));
    ok->setIcon(ZoImageIcon(L"OK-16.png"));
    ok->setDefault(true);
    QPushButton* cancel = buttons->addButton(QString(), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("cancelButton"));
    cancel->setIcon(ZoImageIcon(L"CANCEL-16.png"));
    mnemonics.Set(ok, ZoText(311));
    mnemonics.Set(cancel, ZoText(312));

    auto* expressionLabel = new QLabel(this);
    mnemonics.Set(expressionLabel, ZoText(62201));
    m_expression = new QPlainTextEdit(this);
    m_expression->setObjectName(QStringLiteral("expressionEdit"));
    m_expression->setTabChangesFocus(true);
    m_expression->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_expression->setToolTip(QString::fromStdWString(ZoFormat(ZoLoadString(62210).c_str()))); // "%%" is the operator
    m_expression->setPlaceholderText(ZoText(62211));
    m_expression->setFixedHeight(m_expression->fontMetrics().lineSpacing() * 4 + 12);
    m_expression->installEventFilter(this);
    expressionLabel->setBuddy(m_expression);

    m_statusIcon = new QLabel(this);
    m_statusIcon->setObjectName(QStringLiteral("statusIcon"));
    m_statusIcon->setFixedSize(16, 16);
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("statusLabel"));
    m_status->setTextFormat(Qt::PlainText);
    QFont bold = m_status->font();
    bold.setBold(true);
    m_status->setFont(bold);
    m_statusDetail = new QLabel(this);
    m_statusDetail->setObjectName(QStringLiteral("statusDetail"));
    m_statusDetail->setTextFormat(Qt::PlainText);
    m_statusDetail->setWordWrap(true);
    m_statusDetail->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* statusRow = new QGridLayout;
    statusRow->addWidget(m_statusIcon, 0, 0, Qt::AlignTop);
    statusRow->addWidget(m_status, 0, 1);
    statusRow->addWidget(m_statusDetail, 1, 1);
    statusRow->setColumnStretch(1, 1);
    statusRow->setHorizontalSpacing(6);

    // Left: the tree of devices and variables.
    auto* left = new QWidget(this);
    auto* model = new ZoDeviceTreeModel(m_catalog ? m_catalog : ZoDeviceCatalog::Installed(),
                                        ZoDeviceTreeModel::Mode::Variables, OfferedTypes(m_kinds), m_writeTarget);
    m_tree = new ZoDeviceTreePanel(left, model, mnemonics, 62104);
    m_insertVariable = new QPushButton(left);
    m_insertVariable->setObjectName(QStringLiteral("insertVariableButton"));
    mnemonics.Set(m_insertVariable, ZoText(62205));
    auto* leftLayout = new QVBoxLayout(left);
    leftLayout->setContentsMargins(0, 0, 0, 0);
    leftLayout->addWidget(m_tree, 1);
    leftLayout->addWidget(m_insertVariable, 0, Qt::AlignLeft);

    m_splitter = new QSplitter(Qt::Horizontal, this);
    m_splitter->setObjectName(QStringLiteral("wizardSplitter"));
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(left);
    m_splitter->addWidget(CreateOperatorsPane(mnemonics));
    m_splitter->setStretchFactor(0, 3);
    m_splitter->setStretchFactor(1, 2);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(expressionLabel);
    layout->addWidget(m_expression);
    layout->addLayout(statusRow);
    layout->addSpacing(4);
    layout->addWidget(m_splitter, 1);
    layout->addWidget(buttons);

    m_statusIcon->setVisible(m_bShowStatus);
    m_status->setVisible(m_bShowStatus);
    m_statusDetail->setVisible(m_bShowStatus);

    connect(m_expression, &QPlainTextEdit::textChanged, this, &CDlgWizzard::OnChangeExpression);
    connect(m_tree, &ZoDeviceTreePanel::Chosen, this, &CDlgWizzard::OnInsertVariable);
    connect(m_tree, &ZoDeviceTreePanel::CurrentChanged, this, &CDlgWizzard::UpdateButtons);
    connect(m_insertVariable, &QPushButton::clicked, this, &CDlgWizzard::OnInsertVariable);
    connect(ok, &QPushButton::clicked, this, &CDlgWizzard::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    resize(900, 620);
    if (auto const memory = Memories().find(m_context); m_context != 0 && memory != Memories().end()) {
        if (memory->second.size.isValid())
            resize(memory->second.size);
        m_splitter->restoreState(memory->second.splitter);
        m_lastVariable = memory->second.lastVariable;
        if (!m_lastVariable.isEmpty())
            m_tree->Select(m_lastVariable);
    }
    SetExpression(m_initial, m_initialStart, m_initialEnd);
    OnChangeExpression();
    m_expression->setFocus();
}

QWidget* CDlgWizzard::CreateOperatorsPane(ZoMnemonics& mnemonics)
{
    auto* pane = new QWidget(this);
    auto* operatorsLabel = new QLabel(ZoText(62203), pane);
    m_operators = new QWidget(pane);
    // One row each: arithmetic, comparisons, then logic, grouping and constants.
    auto* rows = new QVBoxLayout(m_operators);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(3);
    QHBoxLayout* row = nullptr;
    int index = 0;
    for (ZoFormulaOperator const& op : ZoWizardOperators()) {
        if (index == 0 || index == 6 || index == 12) {
            row = new QHBoxLayout;
            row->setSpacing(3);
            rows->addLayout(row);
        }
        ++index;
        auto* button = new QToolButton(m_operators);
        button->setObjectName(QStringLiteral("operatorButton_") + op.text);
        // "&" would be a mnemonic marker; the operators hold none, but stay safe.
        button->setText(QString(op.text).replace(QLatin1Char('&'), QLatin1String("&&")));
        button->setToolTip(ZoText(op.tipId));
        button->setFocusPolicy(Qt::NoFocus); // typing the operator does the same
        button->setMinimumWidth(40);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        QString const text = op.text;
        connect(button, &QToolButton::clicked, this, [this, text] { InsertOperator(text); });
        row->addWidget(button);
    }
    m_operators->setEnabled(!m_writeTarget);

    auto* functionsLabel = new QLabel(pane);
    mnemonics.Set(functionsLabel, ZoText(62204));
    auto* functions = new QTreeWidget(pane);
    functions->setObjectName(QStringLiteral("functionsList"));
    functions->setColumnCount(2);
    functions->setHeaderHidden(true);
    functions->setRootIsDecorated(false);
    functions->setUniformRowHeights(true);
    functions->setAlternatingRowColors(true);
    functions->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    functions->header()->setStretchLastSection(true);
    for (ZoFormulaFunction const& function : ZoWizardFunctions()) {
        auto* item = new QTreeWidgetItem(functions);
        item->setText(0, function.name + QLatin1Char('(') + function.arguments + QLatin1Char(')'));
        item->setText(1, ZoText(function.tipId));
        item->setToolTip(0, ZoText(function.tipId));
        item->setToolTip(1, ZoText(function.tipId));
        item->setData(0, Qt::UserRole, function.name);
    }
    functions->setCurrentItem(functions->topLevelItem(0));
    functions->setEnabled(!m_writeTarget);
    functions->installEventFilter(this);
    functionsLabel->setBuddy(functions);
    m_functions = functions;
    connect(functions, &QTreeWidget::itemDoubleClicked, this, &CDlgWizzard::OnInsertFunction);

    m_insertFunction = new QPushButton(pane);
    m_insertFunction->setObjectName(QStringLiteral("insertFunctionButton"));
    mnemonics.Set(m_insertFunction, ZoText(62206));
    m_insertFunction->setEnabled(!m_writeTarget);
    connect(m_insertFunction, &QPushButton::clicked, this, &CDlgWizzard::OnInsertFunction);

    auto* layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(operatorsLabel);
    layout->addWidget(m_operators);
    layout->addSpacing(6);
    layout->addWidget(functionsLabel);
    layout->addWidget(functions, 1);
    layout->addWidget(m_insertFunction, 0, Qt::AlignLeft);
    return pane;
}

void CDlgWizzard::OnChangeExpression()
{
    if (!m_bShowStatus)
        return;
    ZoWizardStatus const status =
        ZoComputeWizardStatus(*m_evaluator, m_expression->toPlainText().toStdWString(), m_expect);
    m_status->setText(status.line);
    m_statusDetail->setText(status.detail);
    m_statusDetail->setVisible(!status.detail.isEmpty());
    m_statusIcon->setPixmap(SeverityPixmap(status.severity));
}

void CDlgWizzard::Apply(ZoFormulaEdit const& edit)
{
    QTextCursor cursor = m_expression->textCursor();
    cursor.beginEditBlock();
    cursor.setPosition(edit.from);
    cursor.setPosition(edit.to, QTextCursor::KeepAnchor);
    cursor.insertText(edit.text);
    cursor.endEditBlock();
    cursor.setPosition(edit.selStart);
    cursor.setPosition(edit.selEnd, QTextCursor::KeepAnchor);
    m_expression->setTextCursor(cursor);
    m_expression->setFocus();
}

void CDlgWizzard::InsertVariable(QString const& reference)
{
    EnsureInitialized();
    if (m_writeTarget) // the formula is the one variable
        m_expression->selectAll();
    QTextCursor const cursor = m_expression->textCursor();
    Apply(ZoInsertVariable(m_expression->toPlainText(), cursor.selectionStart(), cursor.selectionEnd(), reference));
    m_lastVariable = reference;
}

void CDlgWizzard::InsertOperator(QString const& text)
{
    EnsureInitialized();
    ZoFormulaOperator const* op = FindOperator(text);
    if (!op || m_writeTarget)
        return;
    QTextCursor const cursor = m_expression->textCursor();
    Apply(ZoInsertOperator(m_expression->toPlainText(), cursor.selectionStart(), cursor.selectionEnd(), *op));
}

void CDlgWizzard::InsertFunction(QString const& name)
{
    EnsureInitialized();
    ZoFormulaFunction const* function = FindFunction(name);
    if (!function || m_writeTarget)
        return;
    QTextCursor const cursor = m_expression->textCursor();
    Apply(ZoInsertFunction(m_expression->toPlainText(), cursor.selectionStart(), cursor.selectionEnd(), *function));
}

void CDlgWizzard::OnInsertVariable()
{
    QString const reference = m_tree->ChosenReference();
    if (!reference.isEmpty())
        InsertVariable(reference);
}

void CDlgWizzard::OnInsertFunction()
{
    if (QTreeWidgetItem* item = m_functions->currentItem())
        InsertFunction(item->data(0, Qt::UserRole).toString());
}

void CDlgWizzard::UpdateButtons()
{
    m_insertVariable->setEnabled(!m_tree->ChosenReference().isEmpty());
}

bool CDlgWizzard::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        bool const enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        if (enter && watched == m_expression && (key->modifiers() & Qt::ControlModifier)) {
            accept();
            return true;
        }
        if (enter && watched == m_functions) { // inserts; never closes the wizard
            OnInsertFunction();
            return true;
        }
    }
    return ZoDialog::eventFilter(watched, event);
}

void CDlgWizzard::accept()
{
    m_result = OneLine(m_expression->toPlainText()).toStdWString();
    QDialog::accept();
}

void CDlgWizzard::done(int result)
{
    Remember();
    QDialog::done(result);
}

void CDlgWizzard::Remember()
{
    if (m_context == 0 || !m_splitter)
        return;
    ContextMemory& memory = Memories()[m_context];
    memory.size = size();
    memory.splitter = m_splitter->saveState();
    memory.lastVariable = m_lastVariable;
}

bool ZoRunWizardOnField(CDlgWizzard& wizard, QLineEdit* field)
{
    int start = field->cursorPosition();
    int end = start;
    if (field->hasSelectedText()) {
        start = field->selectionStart();
        end = field->selectionEnd();
    }
    wizard.SetExpression(field->text().toStdWString(), start, end);
    wizard.m_bShowStatus = true;
    if (wizard.DoModal() != QDialog::Accepted)
        return false;
    field->setText(QString::fromStdWString(wizard.Expression()));
    field->setFocus(Qt::OtherFocusReason);
    return true;
}
