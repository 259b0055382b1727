#include "windows/Dialogs.hpp"

#include <QWidget>

#include "windows/AboutWindow.hpp"
#include "windows/ExportWindow.hpp"
#include "windows/HelpWindow.hpp"
#include "windows/PreferencesWindow.hpp"

namespace quill {

namespace {

void BringForward(QWidget* window) {
  // A minimised window comes back as it was before.
  window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
  window->show();
  window->raise();
  window->activateWindow();
}

}  // namespace

void ShowPreferencesWindow() { BringForward(PreferencesWindow::Instance()); }
void ShowAboutWindow() { BringForward(AboutWindow::Instance()); }
void ShowHelpWindow() { BringForward(HelpWindow::Instance()); }
void ShowExportWindow() { BringForward(ExportWindow::Instance()); }

}  // namespace quill
