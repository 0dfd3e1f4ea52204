#pragma once
#include <QAbstractButton>

// A link with an image: the icon at the left, the caption beside it drawn as a link (the
// palette's link colour, underlined while the pointer is over it or it has the focus).
// A click, Space or Enter activates it (clicked()); it takes the focus with Tab; an "&" in
// the caption gives it an Alt mnemonic. The caption is centred vertically on the icon.
class ZoHyperlink : public QAbstractButton {
    Q_OBJECT
public:
    explicit ZoHyperlink(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    static constexpr int kPadding = 4; // around the whole link, and between icon and caption
    bool m_hovered = false;
};
