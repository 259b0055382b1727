// The project pictures, fetched from the application's resources by number
// once and kept for the rest of the run. They carry their transparency, so
// no masks are needed. Drawn at twice their size for sharp screens.
#pragma once

#include <QCursor>
#include <QPixmap>

namespace quill {

// The picture of that resource number; a null picture for an unknown one.
const QPixmap& Picture(int number);

inline const QPixmap& icon100() { return Picture(168); }
inline const QPixmap& dictmode() { return Picture(170); }
inline const QPixmap& convertermode() { return Picture(171); }
inline const QPixmap& dictmode_on() { return Picture(172); }
inline const QPixmap& convertermode_on() { return Picture(173); }
inline const QPixmap& dimple() { return Picture(174); }
inline const QPixmap& lookupbutton() { return Picture(176); }
inline const QPixmap& lookupbutton_on() { return Picture(178); }

// The cursor of the splitter, which moves up and down despite the name.
QCursor HorizontalResizeCursor();

}  // namespace quill
