// A message box with the alert's texts and its buttons in order; none means one OK button.
#include <VendelSDK/WidgetAlertPresenter.h>

#include <QMessageBox>
#include <QPushButton>

namespace VendelSDK {

int WidgetAlertPresenter::runModal(const Alert& alert)
{
    QMessageBox box;
    box.setText(alert.messageText);
    box.setInformativeText(alert.informativeText);
    // Alerts float above the plugin's own windows, which sit above floating windows.
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    QList<QAbstractButton*> buttons;
    for (const QString& title : alert.buttons) {
        buttons.append(
            box.addButton(title, buttons.isEmpty() ? QMessageBox::AcceptRole : QMessageBox::RejectRole));
    }
    if (buttons.isEmpty()) {
        buttons.append(box.addButton(QMessageBox::Ok));
    }
    box.setDefaultButton(qobject_cast<QPushButton*>(buttons.first()));
    box.exec();
    const auto index = buttons.indexOf(box.clickedButton());
    return index < 0 ? 0 : int(index);
}

} // namespace VendelSDK
