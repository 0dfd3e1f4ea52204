#include "timeline/ZoDlgTimeline.h"

#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "timeline/ZoTimelineChart.h"
#include "timeline/ZoTimelineRows.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDateTimeEdit>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

// The spans offered, in days, with their texts.
constexpr struct {
    int days;
    unsigned text;
} kSpans[] = {{7, 64904}, {28, 64905}, {91, 64906}, {182, 64907}, {366, 64908}};

QPushButton* NewButton(QWidget* parent, unsigned text, char const* name)
{
    auto* button = new QPushButton(ZoText(text), parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

QString TitleOf(ZoTimelineRows const& rows)
{
    using Kind = ZoTimeTableResolution::Kind;
    if (rows.Reach() == ZoTableReach::Unrestricted)
        return ZoText(64901);
    unsigned const kind = rows.TableKind() == Kind::Day ? 64936 : rows.TableKind() == Kind::Week ? 64937 : 64938;
    std::wstring const name = rows.Reach() == ZoTableReach::Dangling
                                  ? ZoLoadString(64934)
                                  : ZoFormat(ZoLoadString(kind).c_str(), rows.TableName().c_str());
    return QString::fromStdWString(ZoFormat(ZoLoadString(64900).c_str(), name.c_str()));
}

} // namespace

ZoDlgTimeline::ZoDlgTimeline(QWidget* parent, XmlDocument::XmlNode const* root, std::wstring reference)
    : ZoDialog(parent)
    , m_rows(std::make_unique<ZoTimelineRows>(root, std::move(reference)))
{
    setObjectName("timelineDialog");
    setWindowTitle(TitleOf(*m_rows));

    auto* startLabel = new QLabel(ZoText(64902), this);
    m_start = new QDateEdit(m_rows->Start(), this);
    m_start->setObjectName("startEdit");
    m_start->setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
    m_start->setCalendarPopup(true);
    startLabel->setBuddy(m_start);
    auto* spanLabel = new QLabel(ZoText(64903), this);
    m_span = new QComboBox(this);
    m_span->setObjectName("spanCombo");
    for (auto const& span : kSpans)
        m_span->addItem(ZoText(span.text), span.days);
    m_span->setCurrentIndex(1);
    spanLabel->setBuddy(m_span);
    QPushButton* monthBack = NewButton(this, 64918, "monthBackButton");
    QPushButton* weekBack = NewButton(this, 64919, "weekBackButton");
    QPushButton* weekForward = NewButton(this, 64920, "weekForwardButton");
    QPushButton* monthForward = NewButton(this, 64921, "monthForwardButton");
    auto* top = new QHBoxLayout;
    top->addWidget(startLabel);
    top->addWidget(m_start);
    top->addWidget(spanLabel);
    top->addWidget(m_span);
    top->addStretch();
    for (QPushButton* button : {monthBack, weekBack, weekForward, monthForward})
        top->addWidget(button);

    m_chart = new ZoTimelineChart(m_rows.get(), this);
    m_scroll = new QScrollArea(this);
    m_scroll->setWidget(m_chart);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    auto* legend = new QLabel(ZoText(64922), this);
    legend->setObjectName("legendLabel");
    legend->setWordWrap(true);

    auto* momentLabel = new QLabel(ZoText(64909), this);
    m_moment = new QDateTimeEdit(QDateTime(QDate::currentDate(), QTime(QTime::currentTime().hour(), 0)), this);
    m_moment->setObjectName("momentEdit");
    m_moment->setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm"));
    m_moment->setCalendarPopup(true);
    momentLabel->setBuddy(m_moment);
    m_answer = new QLabel(this);
    m_answer->setObjectName("answerLabel");
    m_answer->setWordWrap(true);
    m_answer->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* moment = new QHBoxLayout;
    moment->addWidget(momentLabel);
    moment->addWidget(m_moment);
    moment->addWidget(m_answer, 1);

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* close = buttons->addButton(ZoText(64917), QDialogButtonBox::RejectRole);
    close->setObjectName("closeButton");
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_scroll, 1);
    layout->addWidget(legend);
    layout->addLayout(moment);
    layout->addWidget(buttons);

    connect(m_chart, &ZoTimelineChart::scrollRequested, this, &ZoDlgTimeline::OnScroll);
    connect(monthBack, &QPushButton::clicked, this, [this] { OnScroll(0, -1); });
    connect(weekBack, &QPushButton::clicked, this, [this] { OnScroll(-1, 0); });
    connect(weekForward, &QPushButton::clicked, this, [this] { OnScroll(1, 0); });
    connect(monthForward, &QPushButton::clicked, this, [this] { OnScroll(0, 1); });
    connect(m_start, &QDateEdit::dateChanged, this, [this](QDate date) {
        if (date != m_rows->Start()) {
            m_rows->SetSpan(date, m_rows->Days());
            UpdateChart();
        }
    });
    connect(m_span, &QComboBox::currentIndexChanged, this, &ZoDlgTimeline::OnSpanChanged);
    connect(m_moment, &QDateTimeEdit::dateTimeChanged, this, &ZoDlgTimeline::UpdateAnswer);
    resize(860, 620);
    UpdateChart();
    UpdateAnswer();
}

ZoDlgTimeline::~ZoDlgTimeline() = default;

void ZoDlgTimeline::OnInitDialog()
{
    m_start->setFocus(Qt::OtherFocusReason);
}

void ZoDlgTimeline::OnScroll(int weeks, int months)
{
    if (weeks)
        m_rows->ScrollWeeks(weeks);
    if (months)
        m_rows->ScrollMonths(months);
    UpdateChart();
}

void ZoDlgTimeline::OnSpanChanged()
{
    m_rows->SetSpan(m_rows->Start(), m_span->currentData().toInt());
    UpdateChart();
}

void ZoDlgTimeline::UpdateChart()
{
    QSignalBlocker const block(m_start);
    m_start->setDate(m_rows->Start());
    m_chart->RowsChanged();
}

void ZoDlgTimeline::UpdateAnswer()
{
    QDateTime const at = m_moment->dateTime();
    ZoMoment const moment = ZoMomentOf(at.date(), at.time().hour() * 60 + at.time().minute());
    m_answer->setText(QString::fromStdWString(m_rows->Answer(moment)));
}

void ZoShowTimeline(QWidget* parent, XmlDocument::XmlNode const* root, std::wstring const& reference)
{
    ZoDlgTimeline dialog(parent, root, reference);
    dialog.DoModal();
}

QPushButton* ZoAddTimelineButton(QDialogButtonBox* buttons, QWidget* dialog, XmlDocument::XmlNode const* element,
                                 XmlDocument::XmlNode const* days, XmlDocument::XmlNode const* weeks,
                                 XmlDocument::XmlNode const* calendars,
                                 std::function<void(XmlDocument::XmlNode*)> unsaved)
{
    QPushButton* button = buttons->addButton(ZoText(64939), QDialogButtonBox::ActionRole);
    button->setObjectName("timelineButton");
    button->setAutoDefault(false);
    button->setEnabled(element && !element->Value(L"id", L"").empty());
    QObject::connect(button, &QPushButton::clicked, dialog, [=] {
        // The containers as they are now, under one root as the resolution reads them; the
        // element's copy sits at the element's place in its container's copy.
        XmlDocument tables;
        tables.Create(L"timeTables");
        XmlDocument::XmlNode* edited = nullptr;
        for (auto const& [tag, container] : {std::pair{L"days", days}, {L"weeks", weeks}, {L"calendars", calendars}}) {
            XmlDocument::XmlNode* copy = tables.Root()->NewChild(tag);
            if (!container)
                continue;
            *copy = *container;
            XmlDocument::XmlNode* mirror = copy->FirstChild();
            for (XmlDocument::XmlNode const* child = container->FirstChild(); child && mirror;
                 child = child->NextSibling(), mirror = mirror->NextSibling())
                if (child == element)
                    edited = mirror;
        }
        if (edited && unsaved)
            unsaved(edited);
        ZoShowTimeline(dialog, tables.Root(), element->Value(L"id", L""));
    });
    return button;
}
