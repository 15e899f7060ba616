#include "frame/entry_view.h"
#include "common/text_values.h"
#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QWheelEvent>

namespace liaowu {

namespace {

void restyle(QWidget* widget, const char* property, bool value) {
    if (widget->property(property).toBool() == value) return;
    widget->setProperty(property, value);
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
}

} // namespace

int pixelsOfTwips(int twips) {
    return (twips + 7) / 15;
}

EntryField::EntryField(const QString& name, QWidget* parent) : QLineEdit(parent) {
    setObjectName(name);
    connect(this, &QLineEdit::textEdited, this, [this] {
        typed = true;
        Q_EMIT typedInto();
    });
}

void EntryField::startWith(const QString& letters) {
    setFocus();
    setText(acceptedText(letters, filterMode, upperCase));
    Q_EMIT textEdited(text());
}

void EntryField::lock(bool asKey) {
    setReadOnly(true);
    setFocusPolicy(Qt::ClickFocus);
    restyle(this, "lockedKey", asKey);
    restyle(this, "locked", !asKey);
}

void EntryField::open() {
    setEnabled(true);
    setReadOnly(false);
    setFocusPolicy(Qt::StrongFocus);
    restyle(this, "lockedKey", false);
    restyle(this, "locked", false);
}

void EntryField::showText(const QString& text) {
    setText(text);
    setCursorPosition(0);
    typed = false;
    // As on gaining the focus: what is typed next takes the place of what is shown.
    if (hasFocus()) selectAll();
}

void EntryField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (event->reason() != Qt::PopupFocusReason) selectAll();
}

void EntryField::focusOutEvent(QFocusEvent* event) {
    enforceLimit();
    QLineEdit::focusOutEvent(event);
}

void EntryField::enforceLimit() {
    if (byteLimit <= 0 || isReadOnly()) return;
    const QString kept = truncateBytes(text(), byteLimit);
    if (kept == text()) return;
    setText(kept);
    Q_EMIT cut(byteLimit);
}

void EntryField::insertFiltered(const QString& raw) {
    const QString kept = acceptedText(raw, filterMode, upperCase);
    if (kept.isEmpty() || isReadOnly()) return;
    insert(kept);
    Q_EMIT textEdited(text());
}

void EntryField::keyPressEvent(QKeyEvent* event) {
    if (isReadOnly()) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    if (event->matches(QKeySequence::Paste)) {
        insertFiltered(QGuiApplication::clipboard()->text());
        return;
    }
    const QString typedText = event->text();
    const bool plain = !typedText.isEmpty() && typedText[0].isPrint() &&
                       !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (plain && (filterMode > 0 || upperCase)) {
        insertFiltered(typedText);
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void EntryField::inputMethodEvent(QInputMethodEvent* event) {
    QInputMethodEvent taken(event->preeditString(), event->attributes());
    taken.setCommitString(acceptedText(event->commitString(), filterMode, upperCase),
                          event->replacementStart(), event->replacementLength());
    QLineEdit::inputMethodEvent(&taken);
    event->accept();
}

void EntryField::contextMenuEvent(QContextMenuEvent* event) {
    QMenu* menu = createStandardContextMenu();
    if (auto* paste = menu->findChild<QAction*>(QStringLiteral("edit-paste"))) {
        paste->disconnect();
        connect(paste, &QAction::triggered, this,
                [this] { insertFiltered(QGuiApplication::clipboard()->text()); });
    }
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}

void EntryField::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton) {
        if (QGuiApplication::clipboard()->supportsSelection())
            insertFiltered(QGuiApplication::clipboard()->text(QClipboard::Selection));
        return;
    }
    QLineEdit::mouseReleaseEvent(event);
}

bool EntryField::event(QEvent* event) {
    // A drop of text would slip past the filter.
    if (event->type() == QEvent::Drop && (filterMode > 0 || upperCase)) return true;
    return QLineEdit::event(event);
}

EntryCombo::EntryCombo(const QString& name, QWidget* parent) : QComboBox(parent) {
    setObjectName(name);
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(4);
}

void EntryCombo::lock(bool on) {
    locked = on;
    setFocusPolicy(on ? Qt::ClickFocus : Qt::StrongFocus);
    restyle(this, "locked", on);
}

void EntryCombo::showText(const QString& text) {
    int at = findText(text);
    if (at < 0 && !text.isEmpty()) {
        addItem(text);
        at = count() - 1;
    } else if (at < 0) {
        insertItem(0, QString());
        at = 0;
    }
    setCurrentIndex(at);
}

void EntryCombo::keyPressEvent(QKeyEvent* event) {
    if (locked) {
        event->ignore();
        return;
    }
    QComboBox::keyPressEvent(event);
}

void EntryCombo::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

void EntryCombo::showPopup() {
    if (!locked) QComboBox::showPopup();
}

void EntryCombo::mousePressEvent(QMouseEvent* event) {
    if (!locked) QComboBox::mousePressEvent(event);
}

void EntryCombo::paintEvent(QPaintEvent* event) {
    QComboBox::paintEvent(event);
    if (locked) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Text), 1.3));
    const QPointF tip(width() - 12, height() / 2.0 + 2);
    painter.drawPolyline(QPolygonF{tip - QPointF(4, 4), tip, tip + QPointF(4, -4)});
}

} // namespace liaowu
