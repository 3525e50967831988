#include "ui/widgets/Splitter.h"

#include <QResizeEvent>

namespace {

class Handle : public QSplitterHandle {
public:
    using QSplitterHandle::QSplitterHandle;

protected:
    void resizeEvent(QResizeEvent* event) override {
        // The splitter gives the contents their place and lays the margins over the pane beside it. Only the
        // contents are painted, but the mouse is taken everywhere. The base class would take the margins
        // away.
        const int margin = Splitter::gripWidth - splitter()->handleWidth();
        const bool mirrored = isRightToLeft();
        setAttribute(Qt::WA_MouseNoMask);
        setContentsMargins(mirrored ? margin : 0, 0, mirrored ? 0 : margin, 0);
        setMask(contentsRect());
        QWidget::resizeEvent(event); // NOLINT(bugprone-parent-virtual-call)
    }
};

} // namespace

QSplitterHandle* Splitter::createHandle() {
    return new Handle(orientation(), this);
}
