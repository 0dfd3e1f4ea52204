#include "ZoDeviceTreeModel.h"

#include "ZoDeviceCatalog.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"

#include <QApplication>
#include <QIcon>
#include <QStyle>

#include <algorithm>
#include <bit>

namespace {

constexpr quintptr kPlaceBits = 2;
constexpr quintptr kPlaceMask = (quintptr(1) << kPlaceBits) - 1;

// Lower case for the filter: ASCII directly, the rest by Unicode case folding. One character
// gives one, so the text is written in place.
void AppendFolded(std::wstring& out, std::wstring_view text)
{
    std::size_t const start = out.size();
    out.resize(start + text.size());
    wchar_t* folded = out.data() + start;
    for (wchar_t const c : text) {
        if (c < 0x80)
            *folded++ = (c >= L'A' && c <= L'Z') ? wchar_t(c + 32) : c;
        else
            *folded++ = static_cast<wchar_t>(QChar::toCaseFolded(static_cast<char32_t>(c)));
    }
}

std::wstring Folded(QString const& text)
{
    std::wstring out;
    AppendFolded(out, text.toStdWString());
    return out;
}

bool Holds(std::wstring_view text, std::wstring_view needle)
{
    return needle.empty() || text.find(needle) != std::wstring_view::npos;
}

QString Q(std::wstring_view text)
{
    return QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size()));
}

QString KindText(ZoVariableKind kind)
{
    return ZoText(62004 + static_cast<unsigned>(kind));
}

} // namespace

ZoDeviceTreeModel::ZoDeviceTreeModel(ZoDeviceCatalog const* catalog, Mode mode, ZoTypeSet const& mask,
                                     bool writableOnly, QObject* parent)
    : QAbstractItemModel(parent)
    , m_catalog(catalog)
    , m_mode(mode)
    , m_mask(mask)
    , m_writableOnly(writableOnly)
{
    Fold();
    FilterDevices({}, false);
    FilterEvents({}, false);
}

ZoDeviceTreeModel::~ZoDeviceTreeModel() = default;

void ZoDeviceTreeModel::Fold()
{
    if (!m_catalog)
        return;
    auto const devices = m_catalog->Devices();
    // The block is sized once: growing it would copy it again and again.
    std::size_t size = 0;
    auto count = [&size](std::wstring_view first, std::wstring_view second) {
        size += first.size() + (second.empty() ? 0 : second.size() + 1);
    };
    for (ZoDriver const& device : devices) {
        count(device.Name(), device.Description());
        for (ZoVariableInfo const& variable : device.Variables())
            count(variable.code, variable.description);
    }
    for (ZoVariableInfo const& variable : m_catalog->EventVariables())
        count(variable.code, variable.description);
    for (ZoDriver const& device : m_catalog->EventsDevices())
        count(device.Name(), {});
    m_folded.reserve(size);

    auto addEntry = [this](std::vector<TextRange>& ranges, std::wstring_view first, std::wstring_view second) {
        auto const begin = static_cast<std::uint32_t>(m_folded.size());
        AppendFolded(m_folded, first);
        auto const firstEnd = static_cast<std::uint32_t>(m_folded.size());
        if (!second.empty()) {
            m_folded += L'\n';
            AppendFolded(m_folded, second);
        }
        ranges.push_back({begin, static_cast<std::uint32_t>(m_folded.size()), firstEnd});
    };
    m_deviceText.reserve(devices.size());
    m_firstVariable.reserve(devices.size());
    std::uint32_t variables = 0;
    for (ZoDriver const& device : devices) {
        addEntry(m_deviceText, device.Name(), device.Description());
        m_firstVariable.push_back(variables);
        for (ZoVariableInfo const& variable : device.Variables())
            addEntry(m_variableText, variable.code, variable.description);
        variables += static_cast<std::uint32_t>(device.Variables().size());
    }
    // The six variables that every events pseudo-device shares follow the devices' ones.
    m_firstEventVariable = variables;
    auto const eventVariables = m_catalog->EventVariables();
    for (std::size_t i = 0; i < eventVariables.size(); ++i) {
        addEntry(m_variableText, eventVariables[i].code, eventVariables[i].description);
        if (Offered(eventVariables[i]))
            m_offeredEventVariables |= std::uint8_t(1u << i);
    }
    m_eventText.reserve(m_catalog->EventsDevices().size());
    for (ZoDriver const& device : m_catalog->EventsDevices())
        addEntry(m_eventText, device.Name(), {});

    // By name, case ignored (the folded names), then as written.
    auto sortByName = [this](std::span<ZoDriver const> drivers, std::vector<TextRange> const& texts,
                             std::vector<std::uint32_t>& order) {
        order.resize(drivers.size());
        for (std::uint32_t i = 0; i < order.size(); ++i)
            order[i] = i;
        auto folded = [&](std::uint32_t i) { return FirstFoldedText(texts[i]); };
        std::stable_sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
            int const byFolded = folded(a).compare(folded(b));
            return byFolded != 0 ? byFolded < 0 : drivers[a].Name() < drivers[b].Name();
        });
    };
    sortByName(devices, m_deviceText, m_sortedDevices);
    sortByName(m_catalog->EventsDevices(), m_eventText, m_sortedEvents);
}

std::wstring_view ZoDeviceTreeModel::FoldedText(TextRange range) const
{
    return std::wstring_view(m_folded).substr(range.begin, range.end - range.begin);
}

std::wstring_view ZoDeviceTreeModel::FirstFoldedText(TextRange range) const
{
    return std::wstring_view(m_folded).substr(range.begin, range.firstEnd - range.begin);
}

bool ZoDeviceTreeModel::Offered(ZoVariableInfo const& variable) const
{
    return (variable.Type() & m_mask).any() && (!m_writableOnly || variable.writable);
}

void ZoDeviceTreeModel::SetFilter(QString const& text)
{
    if (text == m_filter)
        return;
    std::wstring needle = Folded(text.trimmed());
    bool const narrowing = !m_needle.empty() && needle.find(m_needle) != std::wstring::npos;
    beginResetModel();
    m_filter = text;
    m_needle = std::move(needle);
    FilterDevices(m_needle, narrowing);
    FilterEvents(m_needle, narrowing);
    endResetModel();
}

void ZoDeviceTreeModel::FilterDevices(std::wstring_view needle, bool narrowing)
{
    if (!m_catalog)
        return;
    auto const devices = m_catalog->Devices();
    // "PLC1.LEV": a device name holding "plc1" and a code holding "lev".
    std::size_t const point = needle.rfind(L'.');
    std::wstring_view const devicePart = point == std::wstring_view::npos ? std::wstring_view() : needle.substr(0, point);
    std::wstring_view const codePart = point == std::wstring_view::npos ? std::wstring_view() : needle.substr(point + 1);

    std::vector<ShownDevice> previous;
    if (narrowing)
        previous.swap(m_devices);
    m_devices.clear();
    m_shownVariables.clear();
    std::size_t const candidates = narrowing ? previous.size() : m_sortedDevices.size();
    for (std::size_t i = 0; i < candidates; ++i) {
        std::uint32_t const d = narrowing ? previous[i].device : m_sortedDevices[i];
        std::wstring_view const deviceText = FoldedText(m_deviceText[d]);
        bool const deviceMatches = Holds(deviceText, needle);
        bool const nameMatches =
            !devicePart.empty() && FirstFoldedText(m_deviceText[d]).find(devicePart) != std::wstring_view::npos;
        ShownDevice shown{d, {static_cast<std::uint32_t>(m_shownVariables.size()), 0}};
        auto const variables = devices[d].Variables();
        bool variableMatches = false;
        for (std::uint32_t v = 0; v < variables.size(); ++v) {
            if (!Offered(variables[v]))
                continue;
            TextRange const range = m_variableText[m_firstVariable[d] + v];
            bool const matches = deviceMatches || Holds(FoldedText(range), needle) ||
                (nameMatches && FirstFoldedText(range).find(codePart) != std::wstring_view::npos);
            if (!matches)
                continue;
            variableMatches = true;
            if (m_mode == Mode::Variables)
                m_shownVariables.push_back(v);
        }
        shown.variables.end = static_cast<std::uint32_t>(m_shownVariables.size());
        bool const listed = m_mode == Mode::Variables ? variableMatches : (deviceMatches || variableMatches);
        if (listed)
            m_devices.push_back(shown);
    }
}

void ZoDeviceTreeModel::FilterEvents(std::wstring_view needle, bool narrowing)
{
    if (!m_catalog || m_mode == Mode::Devices || m_offeredEventVariables == 0)
        return;
    // Which of the six shared variables the text finds by code or description.
    std::uint8_t variablesMatching = 0;
    for (std::uint32_t i = m_firstEventVariable; i < m_variableText.size(); ++i)
        if (Holds(FoldedText(m_variableText[i]), needle))
            variablesMatching |= std::uint8_t(1u << (i - m_firstEventVariable));
    variablesMatching &= m_offeredEventVariables;

    std::vector<ShownEvent> previous;
    if (narrowing)
        previous.swap(m_events);
    m_events.clear();
    std::size_t const candidates = narrowing ? previous.size() : m_sortedEvents.size();
    for (std::size_t i = 0; i < candidates; ++i) {
        std::uint32_t const e = narrowing ? previous[i].device : m_sortedEvents[i];
        std::uint8_t const shown = Holds(FoldedText(m_eventText[e]), needle) ? m_offeredEventVariables : variablesMatching;
        if (shown)
            m_events.push_back({e, shown});
    }
}

int ZoDeviceTreeModel::VariableCount() const
{
    int count = static_cast<int>(m_shownVariables.size());
    for (ShownEvent const& shown : m_events)
        count += std::popcount(shown.variables);
    return count;
}

bool ZoDeviceTreeModel::ShowsEventsBranch() const
{
    return !m_events.empty();
}

int ZoDeviceTreeModel::EventVariableAt(ShownEvent const& shown, int row) const
{
    for (int i = 0; i < 8; ++i)
        if ((shown.variables >> i) & 1u)
            if (row-- == 0)
                return i;
    return -1;
}

ZoDeviceTreeModel::Place ZoDeviceTreeModel::PlaceOf(QModelIndex const& index)
{
    return static_cast<Place>(index.internalId() & kPlaceMask);
}

quintptr ZoDeviceTreeModel::ParentRowOf(QModelIndex const& index)
{
    return index.internalId() >> kPlaceBits;
}

QModelIndex ZoDeviceTreeModel::index(int row, int column, QModelIndex const& parent) const
{
    if (row < 0 || column < 0 || column >= ColumnCount || row >= rowCount(parent))
        return {};
    if (!parent.isValid())
        return createIndex(row, column, quintptr(TopLevel));
    switch (KindOf(parent)) {
    case RowKind::Device:
        return createIndex(row, column, quintptr(InDevice) | (quintptr(parent.row()) << kPlaceBits));
    case RowKind::EventsBranch:
        return createIndex(row, column, quintptr(InEventsBranch));
    case RowKind::EventsDevice:
        return createIndex(row, column, quintptr(InEventsDevice) | (quintptr(parent.row()) << kPlaceBits));
    default:
        return {};
    }
}

QModelIndex ZoDeviceTreeModel::parent(QModelIndex const& child) const
{
    if (!child.isValid())
        return {};
    switch (PlaceOf(child)) {
    case InDevice:
        return createIndex(static_cast<int>(ParentRowOf(child)), 0, quintptr(TopLevel));
    case InEventsBranch:
        return createIndex(DeviceCount(), 0, quintptr(TopLevel));
    case InEventsDevice:
        return createIndex(static_cast<int>(ParentRowOf(child)), 0, quintptr(InEventsBranch));
    default:
        return {};
    }
}

int ZoDeviceTreeModel::rowCount(QModelIndex const& parent) const
{
    if (!parent.isValid())
        return DeviceCount() + (ShowsEventsBranch() ? 1 : 0);
    if (parent.column() != 0)
        return 0;
    switch (KindOf(parent)) {
    case RowKind::Device: {
        Span const span = m_devices[static_cast<std::size_t>(parent.row())].variables;
        return m_mode == Mode::Variables ? static_cast<int>(span.end - span.begin) : 0;
    }
    case RowKind::EventsBranch:
        return EventsDeviceCount();
    case RowKind::EventsDevice:
        return std::popcount(m_events[static_cast<std::size_t>(parent.row())].variables);
    default:
        return 0;
    }
}

int ZoDeviceTreeModel::columnCount(QModelIndex const&) const
{
    return ColumnCount;
}

bool ZoDeviceTreeModel::hasChildren(QModelIndex const& parent) const
{
    return rowCount(parent) > 0;
}

ZoDeviceTreeModel::RowKind ZoDeviceTreeModel::KindOf(QModelIndex const& index) const
{
    if (!index.isValid() || index.model() != this)
        return RowKind::None;
    switch (PlaceOf(index)) {
    case TopLevel:
        return index.row() < DeviceCount() ? RowKind::Device : RowKind::EventsBranch;
    case InEventsBranch:
        return RowKind::EventsDevice;
    default:
        return RowKind::Variable;
    }
}

ZoDriver const* ZoDeviceTreeModel::DeviceOf(QModelIndex const& index) const
{
    switch (KindOf(index)) {
    case RowKind::Device:
        return &m_catalog->Devices()[m_devices[static_cast<std::size_t>(index.row())].device];
    case RowKind::EventsDevice:
        return &m_catalog->EventsDevices()[m_events[static_cast<std::size_t>(index.row())].device];
    case RowKind::Variable:
        return DeviceOf(parent(index));
    default:
        return nullptr;
    }
}

ZoVariableInfo const* ZoDeviceTreeModel::VariableOf(QModelIndex const& index) const
{
    if (KindOf(index) != RowKind::Variable)
        return nullptr;
    std::size_t const parentRow = ParentRowOf(index);
    if (PlaceOf(index) == InDevice) {
        ShownDevice const& shown = m_devices[parentRow];
        std::uint32_t const v = m_shownVariables[shown.variables.begin + static_cast<std::uint32_t>(index.row())];
        return &m_catalog->Devices()[shown.device].Variables()[v];
    }
    int const v = EventVariableAt(m_events[parentRow], index.row());
    return v < 0 ? nullptr : &m_catalog->EventVariables()[static_cast<std::size_t>(v)];
}

QString ZoDeviceTreeModel::ReferenceOf(QModelIndex const& index) const
{
    ZoDriver const* device = DeviceOf(index);
    if (!device)
        return {};
    if (ZoVariableInfo const* variable = VariableOf(index))
        return Q(device->Name()) + QLatin1Char('.') + Q(variable->code);
    return Q(device->Name());
}

QModelIndex ZoDeviceTreeModel::FindReference(QString const& reference) const
{
    if (!m_catalog)
        return {};
    auto findDevice = [this](std::wstring_view name) -> QModelIndex {
        for (int row = 0; row < DeviceCount(); ++row)
            if (m_catalog->Devices()[m_devices[static_cast<std::size_t>(row)].device].Name() == name)
                return index(row, 0);
        QModelIndex const branch = index(DeviceCount(), 0);
        for (int row = 0; row < EventsDeviceCount(); ++row)
            if (m_catalog->EventsDevices()[m_events[static_cast<std::size_t>(row)].device].Name() == name)
                return index(row, 0, branch);
        return {};
    };
    std::wstring const text = reference.toStdWString();
    if (QModelIndex const device = findDevice(text); device.isValid())
        return device;
    std::size_t const point = text.rfind(L'.');
    if (point == std::wstring::npos)
        return {};
    // A reference to a device this catalog lacks finds nothing (the invalid index would
    // otherwise stand for the top level, whose rows are devices, not variables).
    QModelIndex const device = findDevice(std::wstring_view(text).substr(0, point));
    if (!device.isValid())
        return {};
    std::wstring_view const code = std::wstring_view(text).substr(point + 1);
    for (int row = 0; row < rowCount(device); ++row) {
        QModelIndex const variable = index(row, 0, device);
        if (ZoVariableInfo const* info = VariableOf(variable); info && info->code == code)
            return variable;
    }
    return {};
}

QString ZoDeviceTreeModel::DetailsOf(QModelIndex const& index) const
{
    ZoDriver const* device = DeviceOf(index);
    if (!device)
        return {};
    QStringList lines;
    if (ZoVariableInfo const* variable = VariableOf(index)) {
        lines << ReferenceOf(index);
        if (!variable->description.empty())
            lines << Q(variable->description);
        std::wstring const values = ZoDescribeValues(*variable);
        lines << Q(ZoFormat(ZoLoadString(62010).c_str(), values.c_str()));
        if (!variable->unit.empty() && !std::wstring_view(values).ends_with(variable->unit))
            lines << Q(ZoFormat(ZoLoadString(62011).c_str(), std::wstring(variable->unit).c_str()));
        lines << ZoText(variable->writable ? 62012 : 62013);
        return lines.join(QLatin1Char('\n'));
    }
    lines << Q(device->Name());
    if (device->IsEventsDevice()) {
        lines << Q(ZoFormat(ZoLoadString(62017).c_str(), std::wstring(device->Description()).c_str()));
    } else {
        if (!device->Description().empty())
            lines << Q(device->Description());
        lines << Q(ZoFormat(ZoLoadString(62014).c_str(), std::wstring(device->Type()).c_str()));
        if (!device->Address().empty())
            lines << Q(ZoFormat(ZoLoadString(62015).c_str(), std::wstring(device->Address()).c_str()));
    }
    lines << Q(ZoFormat(ZoLoadString(62016).c_str(), static_cast<int>(device->Variables().size())));
    return lines.join(QLatin1Char('\n'));
}

QVariant ZoDeviceTreeModel::DisplayData(QModelIndex const& index, int column) const
{
    RowKind const kind = KindOf(index);
    if (kind == RowKind::EventsBranch)
        return column == NameColumn ? Q(ZoFormat(ZoLoadString(62003).c_str(), EventsDeviceCount())) : QVariant();
    if (ZoVariableInfo const* variable = VariableOf(index)) {
        switch (column) {
        case NameColumn: return Q(variable->code);
        case DescriptionColumn: return Q(variable->description);
        default: return KindText(variable->kind);
        }
    }
    ZoDriver const* device = DeviceOf(index);
    switch (column) {
    case NameColumn: return Q(device->Name());
    case DescriptionColumn: return device->IsEventsDevice() ? QString() : Q(device->Description());
    default: return Q(device->Type());
    }
}

QVariant ZoDeviceTreeModel::data(QModelIndex const& index, int role) const
{
    if (KindOf(index) == RowKind::None)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return DisplayData(index, index.column());
    case Qt::ToolTipRole:
        return DetailsOf(index);
    case Qt::DecorationRole: {
        if (index.column() != NameColumn)
            return {};
        auto cached = [](QIcon& icon, auto make) -> QIcon const& {
            if (icon.isNull())
                icon = make();
            return icon;
        };
        switch (KindOf(index)) {
        case RowKind::Device:
            return cached(m_deviceIcon, [] { return QApplication::style()->standardIcon(QStyle::SP_DriveNetIcon); });
        case RowKind::EventsBranch:
            return cached(m_branchIcon, [] { return QApplication::style()->standardIcon(QStyle::SP_DirIcon); });
        case RowKind::EventsDevice:
            return cached(m_eventIcon, [] { return ZoImageIcon(L"SYSTEM-event_16.png"); });
        default:
            return {};
        }
    }
    default:
        return {};
    }
}

QVariant ZoDeviceTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount)
        return {};
    return ZoText(62000 + static_cast<unsigned>(section));
}

Qt::ItemFlags ZoDeviceTreeModel::flags(QModelIndex const& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}
