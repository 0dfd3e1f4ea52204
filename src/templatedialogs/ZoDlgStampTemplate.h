#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoModal.h"

#include <memory>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeView;
class TemplateRowsModel;
class ZoDeviceCatalog;
class ZoDriver;
namespace zo::templates {
class TemplateStamper;
}

// Events > Stamp from Template: the user chooses a template, then devices of the catalog
// (filtered by a name pattern and a type, optionally only those that have every variable
// the template uses; any number of them, checked), and optionally an event group. The
// preview lists the events to create with their names and conditions, and the devices
// skipped with the reason. OK makes exactly the previewed events, as one change of the
// events document and the device tree (the caller journals and saves both).
//
// Object names: templateCombo, patternEdit, typeCombo, capableCheck, devicesList,
// selectAllButton, groupCombo, previewList, summaryLabel, okButton, cancelButton.
class ZoDlgStampTemplate : public ZoDialog {
    Q_OBJECT
public:
    // events: the event configuration document; deviceGroups: where events are registered;
    // catalog: the project's devices.
    ZoDlgStampTemplate(QWidget* parent, XmlDocument* events, XmlDocument::XmlNode* deviceGroups,
                       ZoDeviceCatalog const* catalog);
    ~ZoDlgStampTemplate() override;

    // The events made by OK.
    int Made() const { return m_made; }
    // The template chosen in the list (null before the dialog is initialised).
    XmlDocument::XmlNode* ChosenTemplate() const;

protected:
    void OnInitDialog() override;

private:
    void FillDevices();
    void UpdatePreview();
    void OnOK();

    XmlDocument* m_events;
    XmlDocument::XmlNode* m_deviceGroups;
    ZoDeviceCatalog const* m_catalog;
    std::vector<XmlDocument::XmlNode*> m_templates;
    std::vector<std::wstring> m_groupIds;
    std::vector<ZoDriver const*> m_devices; // the rows of the devices list
    std::unique_ptr<zo::templates::TemplateStamper> m_stamper;
    int m_made = 0;

    QComboBox* m_template = nullptr;
    QLineEdit* m_pattern = nullptr;
    QComboBox* m_type = nullptr;
    QCheckBox* m_capable = nullptr;
    TemplateRowsModel* m_devicesModel = nullptr;
    QTreeView* m_devicesList = nullptr;
    QPushButton* m_selectAll = nullptr;
    QComboBox* m_group = nullptr;
    TemplateRowsModel* m_previewModel = nullptr;
    QTreeView* m_previewList = nullptr;
    QLabel* m_summary = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
    std::vector<QLabel*> m_labels;
};
