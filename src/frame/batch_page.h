#pragma once
#include "frame/batch_spec.h"
#include <QWidget>

class QFrame;
class QLabel;

namespace liaowu {

class BrowseGrid;
class LineGrid;
class Process;

/// A page on which unapproved documents are listed, marked and approved one after the other.
class BatchPage : public QWidget {
    Q_OBJECT
public:
    BatchPage(Process& process, BatchSpec spec, QWidget* parent);
    /// Fresh boxes and list.
    void open();
    /// Approves the rows marked "Y", each on its own, then reads the list again.
    void approveMarked();
    void endEdit();

Q_SIGNALS:
    void listed(int rows);

private:
    void build();
    void load();
    void markAll();
    void flip(int row);
    void showDetail(int row);

    Process& process;
    BatchSpec spec;
    LineGrid* grid;
    QFrame* panel;
    BrowseGrid* detail;
    QString shown;
};

} // namespace liaowu
