#pragma once
#include "config/XmlDocument.h"
#include "editor/ZoEventFields.h"
#include "platform/ui/ZoModal.h"
#include "platform/ui/ZoMnemonics.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;
class QToolButton;
class QTreeView;
class QWidget;
class ZoEDlgEventActionsCfg;
class ZoEvaluator;
class ZoTimeTableChoiceModel;
class ZoArgumentsListModel;
class ZoEventGroupsListModel;
struct ZoActionFault;
struct ZoFormulaStatus;

using XmlNode = XmlDocument::XmlNode;

// The event editor: edits one `event` element in place (the caller hands it an element of
// a working copy and keeps or drops the copy by the result).
//
// Object names of the controls, used by tests and by callers that script the dialog:
//   tabs (QTabWidget: General, Advanced, Actions, Client actions)
//   nameEdit, descriptionEdit, conditionEdit, stopConditionCheck, stopConditionEdit,
//   delayActivateEdit, delayDeactivateEdit, timeTableCombo, notifyCheck, recordCheck,
//   enabledCheck, rssActivateCheck, rssDeactivateCheck, rssAcknowledgeCheck,
//   annotationEdit, deaAnnotationEdit, ackAnnotationEdit, okButton, cancelButton
// and further: the labels conditionLabel, stopConditionLabel, delayActivateLabel,
//   delayDeactivateLabel; the formula wizards' buttons conditionWizardButton,
//   stopConditionWizardButton, delayActivateWizardButton, delayDeactivateWizardButton; feedGroup (the feed check boxes' frame); groupsList and
//   argumentsList; actionsMomentTabs and clientActionsMomentTabs (one page per moment),
//   whose pages are the action panes actionsPane0..3 and clientActionsPane0..3
//   (ZoEDlgEventActionsCfg, by moment: activate, while, deactivate, acknowledge).
// The annotation area (Advanced tab): groupsList with addGroupButton, deleteGroupButton;
//   argumentsList with addArgumentButton, modifyArgumentButton, deleteArgumentButton; the
//   annotation fields' wizard buttons annotationWizardButton, deaAnnotationWizardButton,
//   ackAnnotationWizardButton (Ctrl+Space in a field does the same).
class ZoEDlgEventCfg : public ZoDialog {
    Q_OBJECT
public:
    ZoEDlgEventCfg(QWidget* parent, XmlNode* event, XmlNode const* eventsRoot,
                   XmlNode const* groupsRoot, XmlNode const* timeTablesRoot, XmlDocument* users);
    ~ZoEDlgEventCfg() override;

    // Open-at fields, set between construction and DoModal (search shows a match with them).
    int m_focusCode = 0;       // 0, or 1..10: the place of interest; non-zero OK neither validates nor writes
    bool m_skipCheck = false;  // handed to the action panes; with a focus code relabels OK (text 34893)
    bool m_keep = false;       // handed to the action panes
    int m_presetIndex = -1;    // handed to the action panes
    // Set by a caller that knows the names of the other events: false when no other event
    // can bear this name (not even with other case), so that the name check need not read
    // every event. Without it, every event is read.
    std::function<bool(std::wstring_view name)> m_mayClash;
    // Opens with the tab that holds this control (an object name above) selected and the
    // focus on it; for the action tabs, the moment's pane (m_openAtMoment, 0..3) shown.
    // Unlike the focus code, OK validates and writes as usual.
    QString m_openAtControl;
    int m_openAtMoment = -1;

    // Tabs, in order.
    enum Tab { TabGeneral = 0, TabAdvanced = 1, TabActions = 2, TabClientActions = 3 };

    // Whether the fields differ from the event (the first reason found, or None).
    bool HasChanged() const;
    // The action pane of side (0 `actions`, 1 `clientActions`) and moment (0..3).
    ZoEDlgEventActionsCfg* ActionPane(int side, int moment) const;
    ZoEventChange FirstChange() const;

    // OK: with focus code 0, validates and writes the fields when they changed; with any
    // other focus code closes without either. Also what Enter does.
    void accept() override;

    // Whether the event may be saved: the hard errors stop it, formula and action faults
    // are asked about one after the other (Yes goes on). Shows its messages, the tab and
    // the field concerned.
    bool IsValid();
    bool AskToUpdateReferences(std::wstring const& oldName);
    // Whether every checked action passes or was accepted by the user.
    bool IsValidActions();
    // One action of list (0 `actions`, 1 `clientActions`) at moment (0..3).
    bool IsValidActionForce(XmlNode const& action, int list, int moment);
    bool IsValidActionDevice(XmlNode const& action, int list, int moment);
    bool IsValidActionScreen(XmlNode const& action, int list, int moment);
    bool IsValidActionReport(XmlNode const& action, int list, int moment);
    bool IsValidActionMail(XmlNode const& action, int list, int moment);

    // Runs the annotation wizard over text with the selection [selStart, selEnd) and puts
    // the chosen placeholder in the selection's place; returns the placeholder's length, or
    // -1 (text unchanged) when the user cancelled at any step.
    int AnnotationWizzard(std::wstring& text, int selStart, int selEnd);
    // The wizard's step for "%a" and "%g": the user picks an argument or one of the groups
    // shown; out becomes "%a" or "%g" with its number. False on Cancel.
    bool AddingAnnotationArgument(std::wstring& out);
    bool AddingAnnotationGroup(std::wstring& out);

protected:
    void OnInitDialog() override;

private:
    void BuildControls();
    QWidget* BuildGeneralTab();
    QWidget* BuildAdvancedTab();
    QWidget* BuildActionsTab(int side);
    void AddActionPanes(int side, QTabWidget* moments);
    void InitializeActionPanes();
    void ShowActionPane(int side);
    void ConnectHandlers();

    void LoadFields();
    void FillTimeTableList(std::optional<std::wstring> const& timeTable);
    ZoEventFields FieldsFromControls() const;
    bool UpdateCfg();
    bool ActionPanelsModified() const;
    void SelectTabOfFocusCode();
    void OpenAtControl();

    bool IsValidName();
    void FillEmptyDelays();
    bool HasCondition();
    bool IsValidFormulas();
    bool IsValidArguments();
    bool AcceptAction(std::optional<ZoActionFault> const& fault, int list, int moment);
    void ShowTab(Tab tab);
    void FocusField(QLineEdit* field);

    void OnOK();
    void OnSelchangeTab(int index);
    void OnEditchangeCondition();
    void OnEditchangeConditionStop();
    void OnEditchangeActivationFormule();
    void OnEditchangeDeactivationFormule();
    void ShowStatus(QLabel* label, ZoFormulaStatus const& status);
    void OnWizzard();
    void OnStopWizzard();
    void OnActivationFormuleWizzard();
    void OnDeactivationFormuleWizzard();
    void RunFormulaWizard(QLineEdit* field, bool numeric);
    void OnEnableConditionStop();
    void OnClickedNotify();
    void UpdateFeedControls();

    // The annotation area: texts with their wizards, arguments, group memberships
    // (ZoEDlgEventCfgAnnotations.cpp, ZoEDlgEventCfgGroups.cpp).
    QWidget* BuildAnnotationArea(QWidget* page);
    void ConnectAnnotationHandlers();
    void LoadAnnotationLists();
    bool OnKeydownAnnotationLists(QTreeView* list, int key);
    void RunAnnotationWizard(QLineEdit* field);
    void OnAnnotationWizzard();
    void OnDeactivateWizzard();
    void OnAcknowledgeWizzard();
    void OnAddAnnotationArgument();
    void OnModifyAnnotationArgument();
    void OnDeleteAnnotationArgument();
    void OnDblclkAnnotationList();
    void OnItemchangedAnnotationList();
    void OnColumnclickAnnotationList(int column);
    void UpdateAnnotationList();
    void ResetAnnotationList();
    void UpdateAnnotationButtons();
    void AdjustAnnotationListColumnsSize();
    XmlNode* SelectedArgument() const;
    void UpdateGroupsList();
    void ResetGroupsList();
    void UpdateGroupsButtons();
    void AdjustGroupsListColumnsSize();
    void OnAddGroup();
    void OnDeleteGroup();
    void OnItemchangedGroupsList();
    void OnColumnclickGroupsList(int column);

    XmlNode* m_event;
    XmlNode const* m_eventsRoot;
    XmlNode const* m_groupsRoot;
    XmlNode const* m_timeTablesRoot;
    XmlDocument* m_users;
    std::wstring m_id;       // the event's id when the editor opened
    bool m_changed = false;  // set by edits that the field comparison cannot see
    std::unique_ptr<ZoEvaluator> m_evaluator; // checks the formulas as they are typed
    ZoMnemonics m_keys;                       // the Alt keys of the labels, boxes and tabs

    QTabWidget* m_tabs = nullptr;
    QLineEdit* m_name = nullptr;
    QLineEdit* m_description = nullptr;
    QLabel* m_conditionLabel = nullptr;
    QLineEdit* m_condition = nullptr;
    QCheckBox* m_stopEnabled = nullptr;
    QLabel* m_stopLabel = nullptr;
    QLineEdit* m_stopCondition = nullptr;
    QLabel* m_delayActivateLabel = nullptr;
    QLineEdit* m_delayActivate = nullptr;
    QLabel* m_delayDeactivateLabel = nullptr;
    QLineEdit* m_delayDeactivate = nullptr;
    QToolButton* m_conditionWizard = nullptr;
    QToolButton* m_stopWizard = nullptr;
    QToolButton* m_delayActivateWizard = nullptr;
    QToolButton* m_delayDeactivateWizard = nullptr;
    QComboBox* m_timeTable = nullptr;
    ZoTimeTableChoiceModel* m_timeTables = nullptr;
    QCheckBox* m_notify = nullptr;
    QCheckBox* m_record = nullptr;
    QCheckBox* m_enabled = nullptr;
    QGroupBox* m_feedGroup = nullptr;
    QCheckBox* m_rssActivate = nullptr;
    QCheckBox* m_rssDeactivate = nullptr;
    QCheckBox* m_rssAcknowledge = nullptr;
    QTreeView* m_groupsList = nullptr;
    QTreeView* m_argumentsList = nullptr;
    QLineEdit* m_annotation = nullptr;
    QLineEdit* m_deaAnnotation = nullptr;
    QLineEdit* m_ackAnnotation = nullptr;
    ZoArgumentsListModel* m_arguments = nullptr;
    ZoEventGroupsListModel* m_groups = nullptr;
    QPushButton* m_addArgument = nullptr;
    QPushButton* m_modifyArgument = nullptr;
    QPushButton* m_deleteArgument = nullptr;
    QPushButton* m_addGroup = nullptr;
    QPushButton* m_deleteGroup = nullptr;
    QToolButton* m_annotationWizard = nullptr;
    QToolButton* m_deaAnnotationWizard = nullptr;
    QToolButton* m_ackAnnotationWizard = nullptr;
    QObject* m_annotationKeys = nullptr; // Enter and Delete in the two lists
    QTabWidget* m_momentTabs[2] = {nullptr, nullptr};
    ZoEDlgEventActionsCfg* m_actionPanes[2][4] = {}; // [side][moment]
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
};
