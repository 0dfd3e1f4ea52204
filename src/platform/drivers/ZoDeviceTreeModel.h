#pragma once
#include "ZoVariableType.h"

#include <QAbstractItemModel>
#include <QIcon>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class ZoDeviceCatalog;
class ZoDriver;
struct ZoVariableInfo;

// The device catalog as a tree for the choosers (ZoSelectDriver, the formula wizard):
//
//   PLC1                      devices, sorted by name
//     TANK_LEVEL              their variables, in catalog order
//   ...
//   Events (123)              one branch holding the events pseudo-devices, sorted by name
//     R$EVE_Pump 1 fault
//       ST ...                the six variables of an event's state
//
// Columns: name (device name or variable code), description, kind (the driver type or the
// variable's kind).
//
// Filtering (SetFilter) keeps the devices whose name or description holds the text, with
// all their offered variables, and the devices of which a variable's code or description
// holds it, with those variables only; case is ignored. Nothing is built per row: the catalog
// is folded to lower case once, into one block of text, and a filter produces flat arrays of
// indices that the model's rows are read from. A filter that extends the previous one (the
// next keystroke) only searches what the previous one kept. The tree is reset on each
// filter, and a view asks for a device's rows only when it expands it.
//
// Offered variables: those whose type set shares a bit with the type mask (and, with
// writableOnly, that are writable). A device without an offered variable is not listed in
// variable mode; in device mode (no variables shown) every device is, and the events
// pseudo-devices are left out.
//
// The catalog must outlive the model and must not be reloaded while the model shows it.
class ZoDeviceTreeModel : public QAbstractItemModel {
    Q_OBJECT
public:
    enum class Mode { Devices, Variables };
    enum Column { NameColumn, DescriptionColumn, KindColumn, ColumnCount };
    // What a row stands for (RowKind).
    enum class RowKind { None, Device, EventsBranch, EventsDevice, Variable };

    // catalog: null shows an empty tree.
    ZoDeviceTreeModel(ZoDeviceCatalog const* catalog, Mode mode, ZoTypeSet const& mask = ZoAllTypes(),
                      bool writableOnly = false, QObject* parent = nullptr);
    ~ZoDeviceTreeModel() override;

    // Filters the rows by a text (see above); an empty text shows everything offered.
    void SetFilter(QString const& text);
    QString const& Filter() const { return m_filter; }

    bool VariablesShown() const { return m_mode == Mode::Variables; }

    // Counts of what the filter kept.
    int DeviceCount() const { return static_cast<int>(m_devices.size()); }
    int EventsDeviceCount() const { return static_cast<int>(m_events.size()); }
    int VariableCount() const; // of ordinary and events devices

    RowKind KindOf(QModelIndex const& index) const;
    // The device of a device row or of a variable row, else null.
    ZoDriver const* DeviceOf(QModelIndex const& index) const;
    // The variable of a variable row, else null.
    ZoVariableInfo const* VariableOf(QModelIndex const& index) const;
    // "DEVICE.CODE" of a variable row, the device name of a device row, else empty.
    QString ReferenceOf(QModelIndex const& index) const;
    // The row of a device ("PLC1") or a variable ("PLC1.LEVEL", the device name ending at its
    // last point); invalid when the filter hides it or it does not exist.
    QModelIndex FindReference(QString const& reference) const;
    // A few lines about a row for the chooser's details pane: a variable's description, values
    // (ZoDescribeValues), unit and whether it can be written; a device's description, type,
    // address and number of variables. Empty for other rows.
    QString DetailsOf(QModelIndex const& index) const;

    QModelIndex index(int row, int column, QModelIndex const& parent = {}) const override;
    QModelIndex parent(QModelIndex const& child) const override;
    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    bool hasChildren(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(QModelIndex const& index) const override;

private:
    // Where a row sits; the parent's row is kept in the index's internal id.
    enum Place : quintptr { TopLevel = 0, InDevice = 1, InEventsBranch = 2, InEventsDevice = 3 };
    struct Span {
        std::uint32_t begin = 0;
        std::uint32_t end = 0;
    };
    struct ShownDevice {
        std::uint32_t device = 0; // index into the catalog's devices
        Span variables;           // into m_shownVariables
    };
    struct ShownEvent {
        std::uint32_t device = 0; // index into the catalog's events devices
        std::uint8_t variables = 0; // bit i: event variable i shown
    };

    void Fold();
    bool Offered(ZoVariableInfo const& variable) const;
    struct TextRange {
        std::uint32_t begin = 0;
        std::uint32_t end = 0;
        std::uint32_t firstEnd = 0; // where the name or code ends
    };
    std::wstring_view FoldedText(TextRange range) const;
    // The name or code alone.
    std::wstring_view FirstFoldedText(TextRange range) const;
    void FilterDevices(std::wstring_view needle, bool narrowing);
    void FilterEvents(std::wstring_view needle, bool narrowing);
    bool ShowsEventsBranch() const;
    int EventVariableAt(ShownEvent const& shown, int row) const;
    static Place PlaceOf(QModelIndex const& index);
    static quintptr ParentRowOf(QModelIndex const& index);
    QVariant DisplayData(QModelIndex const& index, int column) const;

    ZoDeviceCatalog const* m_catalog;
    Mode m_mode;
    ZoTypeSet m_mask;
    bool m_writableOnly;
    QString m_filter;
    std::wstring m_needle; // the filter folded to lower case

    // Folded texts, all in one block: "name\ndescription" of each device, "code\ndescription"
    // of each variable (the devices' variables in catalog order, then the six variables of the
    // events pseudo-devices) and the events pseudo-devices' names.
    std::wstring m_folded;
    std::vector<TextRange> m_deviceText;
    std::vector<TextRange> m_variableText;
    std::vector<TextRange> m_eventText;
    std::vector<std::uint32_t> m_firstVariable; // per device: index of its first variable's text
    std::uint32_t m_firstEventVariable = 0;
    mutable QIcon m_deviceIcon;
    mutable QIcon m_branchIcon;
    mutable QIcon m_eventIcon;
    std::vector<std::uint32_t> m_sortedDevices;
    std::vector<std::uint32_t> m_sortedEvents;
    std::uint8_t m_offeredEventVariables = 0;

    std::vector<ShownDevice> m_devices;
    std::vector<std::uint32_t> m_shownVariables; // indices into the device's variables
    std::vector<ShownEvent> m_events;
};
