#include "windows/Pictures.hpp"

#include <map>

// The pictures are compiled into the window library, which is static: the
// linker keeps them only when someone asks for them by name.
static void InitPictures() { Q_INIT_RESOURCE(pictures); }

namespace quill {

const QPixmap& Picture(int number) {
  static std::map<int, QPixmap> pictures;
  if (pictures.empty()) InitPictures();
  auto it = pictures.find(number);
  if (it == pictures.end()) {
    QPixmap picture(QStringLiteral(":/pictures/%1").arg(number));
    picture.setDevicePixelRatio(2.0);  // the files hold two pixels per point
    it = pictures.emplace(number, picture).first;
  }
  return it->second;
}

QCursor HorizontalResizeCursor() { return QCursor(Qt::SizeVerCursor); }

}  // namespace quill
