#pragma once
#include "frame/pick_spec.h"
#include <QDialog>

class QCheckBox;
class QLabel;
class QRadioButton;

namespace liaowu {

class BrowseGrid;
class EntryField;
class Process;

/// The one pick window, fed by a description. Opens with the focus on the list, letters go to the filter.
class PickWindow : public QDialog {
    Q_OBJECT
public:
    PickWindow(Process& process, PickSpec spec, QWidget* owner);
    const std::vector<QStringList>& picked() const { return result_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void build();
    void run(bool keepFocus);
    void take();

    Process& process;
    PickSpec spec;
    EntryField* filter = nullptr;
    EntryField *from = nullptr, *to = nullptr;
    std::vector<QRadioButton*> sorts;
    QCheckBox* box = nullptr;
    BrowseGrid* grid = nullptr;
    QLabel* count = nullptr;
    std::vector<QStringList> result_;
    bool opened = false;
};

/// Opens the window on `Session::pickParam` and gives the rows picked, none when it was left.
std::vector<QStringList> pickRows(Process& process, const PickSpec& spec, QWidget* owner);
/// The same for one row, which also goes to `Session::pickResult`. Gives whether its first element is not blank.
bool pickRow(Process& process, const PickSpec& spec, QWidget* owner);

} // namespace liaowu
