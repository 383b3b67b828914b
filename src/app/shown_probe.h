#pragma once

#include <QObject>

class QWidget;

namespace vantrel {

// Start-up is measured from outside to the moment a person would first see
// the window: when the first painting pass over it is done, this writes the
// line "shown", with the resident size where the system tells it ("shown
// 41236 KiB"), on standard output and ends the event loop with 0. The
// minimal Qt program of the benchmarks uses the same probe, so both are
// measured alike.
class ShownProbe final : public QObject {
public:
    explicit ShownProbe(const QWidget& window);
    ~ShownProbe() override;
    Q_DISABLE_COPY_MOVE(ShownProbe)

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const QWidget& window_;
    bool painted_ = false;
};

}  // namespace vantrel
