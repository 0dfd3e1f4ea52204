#pragma once
#include "RenamePreviewModel.h"
#include "platform/ui/ZoModal.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeView;

// Events > Rename…: the user picks what to rename (a device, a variable's code, an event),
// types the new name, and sees every change it makes (element, field, before, after, count)
// before OK applies them. OK with fields not yet previewed shows their preview first; a
// refused name shows why, and OK stays unavailable until the fields change.
//
// The dialog changes nothing: after OK the host applies Plan() in one journal and saves.
//
// Object names: kindCombo, deviceEdit, oldNameEdit, newNameEdit, previewButton,
// messageLabel, previewList, okButton, cancelButton.
class RenameDlg : public ZoDialog {
    Q_OBJECT
public:
    RenameDlg(QWidget* parent, XmlDocument& events, XmlDocument& devices);

    // Fills the fields before the dialog opens (from a chooser or a list); the focus goes to
    // the new name.
    void Preset(ZoRenameKind kind, QString const& device, QString const& oldName);
    // The request the fields make now.
    ZoRenameRequest Request() const;
    // After OK: the changes to apply.
    ZoRenamePlan const& Plan() const { return m_preview.CurrentPlan(); }

    void accept() override;

protected:
    void OnInitDialog() override;

private:
    void OnPreview();
    void OnFieldsChanged();

    XmlDocument& m_events;
    XmlDocument& m_devices;
    RenamePreviewModel m_preview;
    QComboBox* m_kind = nullptr;
    QLineEdit* m_device = nullptr;
    QLineEdit* m_oldName = nullptr;
    QLineEdit* m_newName = nullptr;
    QLabel* m_message = nullptr;
    QTreeView* m_list = nullptr;
    QPushButton* m_ok = nullptr;
    ZoRenameKind m_presetKind = ZoRenameKind::Device;
    QString m_presetDevice;
    QString m_presetOld;
};
