// A modal message with an OK button; the caller goes on once it is
// dismissed. Tests put their own handler in its place.
#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace quill {

void MsgBox(QWidget* parent, const QString& text);

// Replaces the message box for the rest of the run; an empty function puts
// the box back.
void SetMsgBoxHandler(std::function<void(const QString&)> handler);

}  // namespace quill
