#include "ProjectPanel.h"

#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"

#include <QDir>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

QLabel* NewLabel(QString const& text, QWidget* parent, qreal scale = 1.0, bool bold = false)
{
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    if (scale != 1.0)
        font.setPointSizeF(font.pointSizeF() * scale);
    font.setBold(bold);
    label->setFont(font);
    return label;
}

// Secondary text: between the text and the background colours, still well readable
// (the palette's disabled colour is too faint for text that matters).
void SetMuted(QLabel* label)
{
    QPalette palette = label->palette();
    QColor const text = palette.color(QPalette::WindowText);
    QColor const window = palette.color(QPalette::Window);
    auto mix = [](int a, int b) { return (a * 62 + b * 38) / 100; };
    palette.setColor(QPalette::WindowText, QColor(mix(text.red(), window.red()),
                                                  mix(text.green(), window.green()),
                                                  mix(text.blue(), window.blue())));
    label->setPalette(palette);
}

QString Counted(unsigned textId, int count)
{
    return QString::fromStdWString(ZoFormat(ZoLoadString(textId).c_str(), count));
}

} // namespace

ProjectPanel::ProjectPanel(QWidget* parent)
    : QWidget(parent)
{
    m_pages = new QStackedWidget(this);
    m_pages->addWidget(CreateEmptyPage());
    m_pages->addWidget(CreateProjectPage());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pages);
}

QWidget* ProjectPanel::CreateEmptyPage()
{
    auto* page = new QWidget(this);
    auto* title = NewLabel(ZoText(60020), page, 1.6, true);
    auto* hint = NewLabel(ZoText(60021), page);
    hint->setWordWrap(true);
    hint->setAlignment(Qt::AlignCenter);
    SetMuted(hint);
    auto* open = new QPushButton(ZoText(60022), page);
    open->setObjectName(QStringLiteral("openFolderButton"));
    open->setMinimumWidth(160);
    connect(open, &QPushButton::clicked, this, &ProjectPanel::openFolderRequested);

    auto* layout = new QVBoxLayout(page);
    layout->addStretch(2);
    layout->addWidget(title, 0, Qt::AlignHCenter);
    layout->addSpacing(8);
    layout->addWidget(hint); // full width: a centred word-wrapped label loses lines
    layout->addSpacing(16);
    layout->addWidget(open, 0, Qt::AlignHCenter);
    layout->addStretch(3);
    return page;
}

QWidget* ProjectPanel::CreateTile(char const* objectName, unsigned captionId, QLabel** number)
{
    auto* tile = new QFrame(this);
    tile->setObjectName(QStringLiteral("tile"));
    tile->setFrameShape(QFrame::StyledPanel);
    tile->setAutoFillBackground(true);
    tile->setBackgroundRole(QPalette::Base);
    *number = NewLabel(QStringLiteral("0"), tile, 2.2, true);
    (*number)->setObjectName(QString::fromLatin1(objectName));
    auto* caption = NewLabel(ZoText(captionId), tile);
    caption->setWordWrap(true);
    SetMuted(caption);
    auto* layout = new QVBoxLayout(tile);
    layout->setContentsMargins(16, 12, 16, 14);
    layout->addWidget(*number);
    layout->addWidget(caption);
    layout->addStretch(1);
    return tile;
}

QWidget* ProjectPanel::CreateProjectPage()
{
    auto* page = new QWidget(this);
    m_name = NewLabel(QString(), page, 1.8, true);
    m_name->setObjectName(QStringLiteral("projectNameLabel"));
    m_folder = NewLabel(QString(), page);
    m_folder->setObjectName(QStringLiteral("projectFolderLabel"));
    m_folder->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_folder->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    SetMuted(m_folder);

    auto* tiles = new QGridLayout();
    tiles->setSpacing(12);
    tiles->addWidget(CreateTile("eventsCountLabel", 60024, &m_events), 0, 0);
    tiles->addWidget(CreateTile("eventGroupsCountLabel", 60025, &m_groups), 0, 1);
    tiles->addWidget(CreateTile("timeTablesCountLabel", 60026, &m_tables), 0, 2);
    tiles->addWidget(CreateTile("eventDevicesCountLabel", 60027, &m_devices), 0, 3);
    for (int column = 0; column < 4; ++column)
        tiles->setColumnStretch(column, 1);

    m_details = NewLabel(QString(), page);
    m_details->setObjectName(QStringLiteral("projectDetailsLabel"));
    SetMuted(m_details);

    auto* events = new QPushButton(ZoText(60028), page);
    events->setObjectName(QStringLiteral("eventsButton"));
    m_editEvent = new QPushButton(ZoText(60029), page);
    m_editEvent->setObjectName(QStringLiteral("editEventButton"));
    connect(events, &QPushButton::clicked, this, &ProjectPanel::eventsRequested);
    connect(m_editEvent, &QPushButton::clicked, this, &ProjectPanel::editEventRequested);
    auto* buttons = new QHBoxLayout();
    buttons->addWidget(events);
    buttons->addWidget(m_editEvent);
    buttons->addStretch(1);

    auto* hint = NewLabel(ZoText(60030), page);
    hint->setWordWrap(true);
    SetMuted(hint);

    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(32, 28, 32, 28);
    layout->addWidget(m_name);
    layout->addWidget(m_folder);
    layout->addSpacing(20);
    layout->addLayout(tiles);
    layout->addSpacing(10);
    layout->addWidget(m_details);
    layout->addSpacing(20);
    layout->addLayout(buttons);
    layout->addSpacing(12);
    layout->addWidget(hint);
    layout->addStretch(1);
    return page;
}

void ProjectPanel::ShowEmpty()
{
    m_pages->setCurrentIndex(0);
}

void ProjectPanel::ShowProject(ProjectSummary const& summary)
{
    m_name->setText(summary.name);
    QString const folder = QDir::toNativeSeparators(summary.folder);
    m_folder->setText(folder);
    m_folder->setToolTip(folder);
    m_events->setNum(summary.events);
    m_groups->setNum(summary.eventGroups);
    m_tables->setNum(summary.timeTables);
    m_devices->setNum(summary.eventDevices);
    QString const separator = QStringLiteral("   \u00B7   ");
    m_details->setText(Counted(60034, summary.catalogDevices) + separator
                       + Counted(60035, summary.screens) + separator
                       + Counted(60036, summary.reports) + separator
                       + Counted(60037, summary.users));
    m_editEvent->setEnabled(summary.events > 0);
    m_pages->setCurrentIndex(1);
}
