#pragma once
#include "ZoDeviceTreeModel.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QTreeView;
class ZoMnemonics;

// The device tree with its filter box and details, as the choosers and the formula wizard
// show it:
//
//   Filter: [..........]        typing filters the tree at once; Down moves into the tree,
//   Devices and variables:      Enter chooses the current row
//   [tree]
//   [details of the current row]
//
// A row can be chosen when it is what the model offers: a variable (variable mode) or a device
// (device mode). Enter or a double click on such a row emits Chosen; Enter on another row
// opens or closes it. After each filter the first row that can be chosen becomes current,
// and when few devices are left they are all opened.
//
// Object names: filterEdit, devicesTree, detailsText.
class ZoDeviceTreePanel : public QWidget {
    Q_OBJECT
public:
    // The panel owns the model. Labels take their mnemonics from mnemonics; treeLabelId is
    // the text above the tree.
    ZoDeviceTreePanel(QWidget* parent, ZoDeviceTreeModel* model, ZoMnemonics& mnemonics, unsigned treeLabelId);

    ZoDeviceTreeModel* Model() const { return m_model; }
    QLineEdit* FilterEdit() const { return m_filter; }
    QTreeView* Tree() const { return m_tree; }

    QModelIndex Current() const;
    bool CanChoose(QModelIndex const& index) const;
    // The reference ("DEVICE.CODE" or a device name) of the current row when it can be
    // chosen, else empty.
    QString ChosenReference() const;
    // Makes the row of that reference current (opening its device); false when not shown.
    bool Select(QString const& reference);

signals:
    void Chosen(QModelIndex const& index);
    void CurrentChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void OnChangeFilter(QString const& text);
    void OnCurrentChanged();
    void SelectFirstChoice();
    bool OnKeyInFilter(int key);
    bool OnKeyInTree(int key);

    ZoDeviceTreeModel* m_model;
    QLineEdit* m_filter = nullptr;
    QTreeView* m_tree = nullptr;
    QLabel* m_details = nullptr;
};
