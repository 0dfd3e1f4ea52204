#pragma once
#include "ZoVariableType.h"
#include "platform/tools/ZoBasicString.h"
#include "platform/ui/ZoModal.h"

#include <functional>

class QPushButton;
class ZoDeviceCatalog;
class ZoDeviceTreePanel;

// The device chooser: the project's devices (and their variables) in a tree with a filter
// box. Select picks a device (the device action); SelectDriverAndVar picks one variable,
// "DEVICE.CODE" (the force action). Both open on what the caller passes in, when the tree
// shows it, and return true on OK with the choice written back.
//
// Keyboard: the focus starts in the filter; typing filters at once, Down moves into the tree,
// Enter chooses the current row (or opens the current device), Escape cancels; every label
// and button has a mnemonic. OK is enabled only on a row that can be chosen.
//
// Runs through ZoRunModal (DoModal), so that tests script it.
//
// Object names: filterEdit, devicesTree, detailsText (ZoDeviceTreePanel), okButton, cancelButton,
// whereUsedButton.
class ZoSelectDriver : public ZoDialog {
    Q_OBJECT
public:
    enum class Mode { Device, Variable };

    // mask: the value types offered (a variable matches when its type set shares a bit with
    // the mask); writableOnly: only variables that can be written. catalog: null uses the
    // installed one (ZoDeviceCatalog::Installed).
    ZoSelectDriver(QWidget* parent, Mode mode, ZoTypeSet const& mask = ZoTypeSet().set(), bool writableOnly = false,
                   ZoDeviceCatalog const* catalog = nullptr);

    // A device of the catalog (ordinary devices only): deviceName in, the chosen name out.
    static bool Select(QWidget* parent, ZoBasicString<wchar_t>& deviceName);
    // One variable: variableName in and out as "DEVICE.CODE" (without brackets).
    static bool SelectDriverAndVar(QWidget* parent, ZoBasicString<wchar_t>& variableName,
                                   ZoTypeSet const& mask = ZoTypeSet().set(), bool writableOnly = false);

    // The row to show first (a device name or "DEVICE.CODE"); set before DoModal.
    void SetInitial(ZoBasicString<wchar_t> const& reference) { m_initial = reference; }
    // After OK: the chosen device name or "DEVICE.CODE".
    ZoBasicString<wchar_t> const& Chosen() const { return m_chosen; }
    ZoDeviceTreePanel* Panel() const { return m_panel; }

    // Takes the current row; refuses to close on a row that cannot be chosen.
    void accept() override;

    // Set by the host (empty: none): shows where a device ("device:NAME") or a variable
    // ("[DEVICE.CODE]") is used. While one is set, every chooser has a Where Used… button
    // (whereUsedButton) for its current row.
    using WhereUsed = std::function<void(QWidget* parent, QString const& reference)>;
    static void SetWhereUsed(WhereUsed show);

protected:
    void OnInitDialog() override;

private:
    void UpdateButtons();

    Mode m_mode;
    ZoTypeSet m_mask;
    bool m_writableOnly;
    ZoDeviceCatalog const* m_catalog;
    ZoBasicString<wchar_t> m_initial;
    ZoBasicString<wchar_t> m_chosen;
    ZoDeviceTreePanel* m_panel = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_whereUsed = nullptr;
};
