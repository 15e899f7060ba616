#pragma once
#include <QComboBox>
#include <QLineEdit>

namespace liaowu {

/// Width of a column or control: screens give it in grid units (one unit = 1/15 of a pixel at 96 dpi, as twips are).
int pixelsOfTwips(int twips);

/// One line of typing: key filter, upper case, Big5 byte limit, everything selected on focus, and the pale yellow look of a
/// locked field. Filters act on what is inserted, whether typed, committed by an input method or pasted.
class EntryField : public QLineEdit {
    Q_OBJECT
public:
    explicit EntryField(const QString& name, QWidget* parent = nullptr);

    int filterMode = 0;
    bool upperCase = false;
    int byteLimit = 0;
    /// Keeps its text when the form is cleared, and its state when the form is unlocked.
    bool leftAlone = false;
    /// Typed into since it was last shown: a lookup that was not typed into does nothing on Enter but move on.
    bool typed = false;

    void lock(bool asKey);
    void open();
    bool isLocked() const { return isReadOnly(); }
    /// Sets the text as a record shows it: not typed, cursor at the start.
    void showText(const QString& text);
    /// Takes the focus and what was typed where nothing can be typed, such as in a list below.
    void startWith(const QString& letters);

Q_SIGNALS:
    void typedInto();
    /// The entry was cut to its limit when it was left.
    void cut(int limit);

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool event(QEvent* event) override;

private:
    void insertFiltered(const QString& text);
    void enforceLimit();
};

/// A list to choose from. The wheel never changes a closed one.
class EntryCombo : public QComboBox {
    Q_OBJECT
public:
    explicit EntryCombo(const QString& name, QWidget* parent = nullptr);
    bool leftAlone = false;
    void lock(bool locked);
    bool isLocked() const { return locked; }
    /// Shows a stored value even when it is no longer in the list.
    void showText(const QString& text);

protected:
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showPopup() override;
    void mousePressEvent(QMouseEvent* event) override;
    /// Draws the mark that tells a list from a box to type in; a locked one has none.
    void paintEvent(QPaintEvent* event) override;

private:
    bool locked = false;
};

} // namespace liaowu
