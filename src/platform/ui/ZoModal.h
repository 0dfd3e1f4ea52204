#pragma once
#include <QDialog>
#include <functional>

// Base of every dialog of the module. DoModal runs OnInitDialog once (so that fields set
// between construction and DoModal are seen, as the open-at fields of the event editor
// need) and then runs the dialog through the modal runner.
class ZoDialog : public QDialog {
    Q_OBJECT
public:
    explicit ZoDialog(QWidget* parent = nullptr);
    // QDialog::Accepted (OK) or QDialog::Rejected (Cancel).
    int DoModal();
    // Runs OnInitDialog if it has not run yet (tests and DoModal call it).
    void EnsureInitialized();

protected:
    virtual void OnInitDialog() {}

private:
    bool m_initialized = false;
};

// Every nested modal run goes through here. By default it calls exec(); tests install a
// runner that fills the dialog's widgets and accepts or rejects it, and returns the result.
using ZoModalRunner = std::function<int(QDialog&)>;
int ZoRunModal(QDialog& dialog);
void ZoSetModalRunner(ZoModalRunner runner); // empty restores exec()
// The runner installed now (empty when exec() is used), so that a guard can restore it.
ZoModalRunner ZoGetModalRunner();
