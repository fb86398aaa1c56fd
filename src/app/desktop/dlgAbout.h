// The About box: the product and version, how long the program has been
// running (refreshed every second while the box is open) and how to order.
#pragma once

#include <QDialog>

class QLabel;
class QTimer;

namespace ira::desktop {

class dlgAbout : public QDialog {
  Q_OBJECT
 public:
  // `startTime`: seconds since midnight when the program started.
  explicit dlgAbout(long startTime, QWidget* parent = nullptr);
  QLabel* lblUsage;
  QTimer* tmrUsage;

  void tmrUsage_Timer();

 private:
  long m_startTime;
};

}  // namespace ira::desktop
