#pragma once
#include "common/record_fields.h"
#include "frame/entry_view.h"
#include <QString>
#include <vector>

class QHBoxLayout;
class QGridLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QCheckBox;

namespace liaowu {

/// One control of a header card: what a screen declares instead of building widgets by hand.
struct FieldSpec {
    enum class Kind { Entry, Combo, Name, Lookup, Check, Value } kind = Kind::Entry;
    QString control; ///< objectName
    QString caption; ///< label before it; empty for none
    int row = 0;
    int column = 0;  ///< slot of the card; a slot holds label, control and what stands beside it
    int width = 110; ///< pixels
    int limit = 0;   ///< Big5 bytes
    int filter = 0;  ///< mode of `filterKey`
    bool upper = false;
    QString button; ///< lookup button beside it
    QString beside; ///< name label beside it
    int span = 1;   ///< slots that it takes
};

/// Builds the controls of a card into `card`; they are found by objectName.
void buildFields(QWidget* card, const std::vector<FieldSpec>& fields);

/// A control of this name below `form`; throws std::logic_error when there is none, a fault of the program.
EntryField* entry(QWidget* form, const QString& name);
EntryCombo* combo(QWidget* form, const QString& name);
QLabel* label(QWidget* form, const QString& name);
QPushButton* button(QWidget* form, const QString& name);
QCheckBox* check(QWidget* form, const QString& name);
QPlainTextEdit* memo(QWidget* form, const QString& name);
/// Any control of this name.
QWidget* control(const QWidget* form, const QString& name);
/// Gives a combo these items in the place of its own.
void setItems(QWidget* form, const QString& name, const QStringList& items);

/// A figure below the grid: its caption, which may be empty, and a label `name` for the value.
QLabel* addFigure(QHBoxLayout* line, QWidget* owner, const QString& name, const QString& caption);

/// Empties text boxes and clears combos that are not marked to be left alone.
void clearForm(QWidget* form);
/// Disables all text boxes and combos.
void lockForm(QWidget* form);
/// Enables the text boxes and combos that are not marked to be left alone.
void unlockForm(QWidget* form);
void lockField(EntryField* field);
void openField(EntryField* field);
/// Read-only, out of the tab order, back colour red 255 green 255 blue 192.
void lockKeyField(EntryField* field);
void openKeyField(EntryField* field);

/// Text of any control: entries, combos, labels, memos; check boxes give "1" or "0".
QString controlText(const QWidget* control);
void setControlText(QWidget* control, const QString& text);

/// Shows the members of a record in the controls that bear the fields' names.
template <typename Record, size_t N>
void showFields(QWidget* form, const std::array<FieldOf<Record>, N>& fields, const Record& record) {
    for (const auto& field : fields)
        setControlText(control(form, QString::fromUtf16(field.name)), record.*field.member);
}
/// Takes what the controls say, trimmed, into the members.
template <typename Record, size_t N>
void takeFields(const QWidget* form, const std::array<FieldOf<Record>, N>& fields, Record& record) {
    for (const auto& field : fields)
        record.*field.member = controlText(control(form, QString::fromUtf16(field.name))).trimmed();
}

} // namespace liaowu
