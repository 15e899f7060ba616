#include "frame/form_view.h"
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <stdexcept>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

template <typename Control>
Control* named(const QWidget* form, const QString& name) {
    if (auto* found = form->findChild<Control*>(name)) return found;
    throw std::logic_error("no control " + name.toStdString());
}

template <typename Visit>
void eachField(QWidget* form, Visit visit) {
    for (EntryField* field : form->findChildren<EntryField*>())
        visit(field);
    for (EntryCombo* field : form->findChildren<EntryCombo*>())
        visit(field);
}

QWidget* makeControl(const FieldSpec& spec, QWidget* card) {
    switch (spec.kind) {
    case FieldSpec::Kind::Combo: {
        auto* control = new EntryCombo(spec.control, card);
        control->setFixedWidth(spec.width);
        return control;
    }
    case FieldSpec::Kind::Check: {
        auto* control = new QCheckBox(spec.caption, card);
        control->setObjectName(spec.control);
        return control;
    }
    case FieldSpec::Kind::Name:
    case FieldSpec::Kind::Value: {
        auto* control = new QLabel(card);
        control->setObjectName(spec.control);
        control->setMinimumWidth(spec.width);
        control->setProperty("valueLabel", true);
        return control;
    }
    case FieldSpec::Kind::Entry:
    case FieldSpec::Kind::Lookup:
        break;
    }
    auto* control = new EntryField(spec.control, card);
    control->setFixedWidth(spec.width);
    control->byteLimit = spec.limit;
    control->filterMode = spec.filter;
    control->upperCase = spec.upper;
    return control;
}

} // namespace

void buildFields(QWidget* card, const std::vector<FieldSpec>& fields) {
    auto* grid = new QGridLayout(card);
    grid->setContentsMargins(12, 8, 12, 8);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(5);
    int lastColumn = 0;
    for (const FieldSpec& spec : fields) {
        auto* line = new QHBoxLayout;
        line->setSpacing(4);
        QWidget* control = makeControl(spec, card);
        line->addWidget(control);
        if (!spec.button.isEmpty()) {
            auto* more = new QPushButton(u"…"_s, card);
            more->setObjectName(spec.button);
            more->setProperty("lookup", true);
            more->setFocusPolicy(Qt::NoFocus);
            line->addWidget(more);
        }
        if (!spec.beside.isEmpty()) {
            auto* beside = new QLabel(card);
            beside->setObjectName(spec.beside);
            beside->setProperty("valueLabel", true);
            beside->setMinimumWidth(92);
            line->addWidget(beside);
        }
        line->addStretch(1);
        if (!spec.caption.isEmpty() && spec.kind != FieldSpec::Kind::Check) {
            auto* caption = new QLabel(spec.caption + u":"_s, card);
            caption->setProperty("caption", true);
            caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
            if (auto* field = qobject_cast<EntryField*>(control)) caption->setBuddy(field);
            grid->addWidget(caption, spec.row, spec.column * 2);
        }
        grid->addLayout(line, spec.row, spec.column * 2 + 1, 1, spec.span * 2 - 1);
        lastColumn = std::max(lastColumn, spec.column);
    }
    grid->setColumnStretch(lastColumn * 2 + 2, 1);
}

EntryField* entry(QWidget* form, const QString& name) {
    return named<EntryField>(form, name);
}
EntryCombo* combo(QWidget* form, const QString& name) {
    return named<EntryCombo>(form, name);
}
QLabel* label(QWidget* form, const QString& name) {
    return named<QLabel>(form, name);
}
QPushButton* button(QWidget* form, const QString& name) {
    return named<QPushButton>(form, name);
}
QCheckBox* check(QWidget* form, const QString& name) {
    return named<QCheckBox>(form, name);
}
QPlainTextEdit* memo(QWidget* form, const QString& name) {
    return named<QPlainTextEdit>(form, name);
}

QLabel* addFigure(QHBoxLayout* line, QWidget* owner, const QString& name, const QString& caption) {
    if (!caption.isEmpty()) {
        auto* text = new QLabel(caption, owner);
        text->setProperty("caption", true);
        line->addWidget(text);
    }
    auto* shown = new QLabel(owner);
    shown->setObjectName(name);
    shown->setProperty("valueLabel", true);
    line->addWidget(shown);
    line->addSpacing(7);
    return shown;
}

QWidget* control(const QWidget* form, const QString& name) {
    return named<QWidget>(form, name);
}
void setItems(QWidget* form, const QString& name, const QStringList& items) {
    EntryCombo* list = combo(form, name);
    list->clear();
    list->addItems(items);
}

void clearForm(QWidget* form) {
    for (EntryField* field : form->findChildren<EntryField*>())
        if (!field->leftAlone) field->showText(QString());
    for (EntryCombo* field : form->findChildren<EntryCombo*>())
        if (!field->leftAlone) field->clear();
    for (QPlainTextEdit* field : form->findChildren<QPlainTextEdit*>())
        field->clear();
}

void lockForm(QWidget* form) {
    eachField(form, [](auto* field) { field->setEnabled(false); });
    for (QPlainTextEdit* field : form->findChildren<QPlainTextEdit*>())
        field->setEnabled(false);
}

void unlockForm(QWidget* form) {
    eachField(form, [](auto* field) {
        if (!field->leftAlone) field->setEnabled(true);
    });
    for (QPlainTextEdit* field : form->findChildren<QPlainTextEdit*>())
        field->setEnabled(true);
}

void lockField(EntryField* field) {
    field->lock(false);
}
void openField(EntryField* field) {
    field->open();
}
void lockKeyField(EntryField* field) {
    field->lock(true);
}
void openKeyField(EntryField* field) {
    field->open();
}

QString controlText(const QWidget* control) {
    if (const auto* field = qobject_cast<const QLineEdit*>(control)) return field->text();
    if (const auto* list = qobject_cast<const QComboBox*>(control)) return list->currentText();
    if (const auto* text = qobject_cast<const QLabel*>(control)) return text->text();
    if (const auto* text = qobject_cast<const QPlainTextEdit*>(control)) return text->toPlainText();
    if (const auto* box = qobject_cast<const QCheckBox*>(control)) return box->isChecked() ? u"1"_s : u"0"_s;
    if (const auto* option = qobject_cast<const QAbstractButton*>(control)) return option->text();
    return {};
}

void setControlText(QWidget* control, const QString& text) {
    if (auto* field = qobject_cast<EntryField*>(control)) {
        field->showText(text);
    } else if (auto* list = qobject_cast<EntryCombo*>(control)) {
        list->showText(text);
    } else if (auto* name = qobject_cast<QLabel*>(control)) {
        name->setText(text);
    } else if (auto* longText = qobject_cast<QPlainTextEdit*>(control)) {
        longText->setPlainText(text);
    } else if (auto* box = qobject_cast<QCheckBox*>(control)) {
        box->setChecked(text == u"1");
    }
}

} // namespace liaowu
