#pragma once
// The program's pictures, drawn with QPainter so that they need no image plugin and stay one
// consistent set: toolbar buttons by key, the two port pictures and the language flags.

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace quillon::app {

// Keys "tbNew" "tbOpen" "tbSave" "tbPrint" "tbDown" "tbUp" "tbClear" "tbHelp" "tbEnd" "tbLog";
// an unknown key gives a null icon.
[[nodiscard]] QIcon toolbarIcon(const QString& key);
[[nodiscard]] QPixmap portPicture(bool open, int size = 16);
// 0 "flgEng", 1 "flgGer", 2 "flgFran"; any other value gives a null pixmap.
[[nodiscard]] QPixmap languageFlag(int language, int height = 16);
// The header pictures of the three mark columns: acknowledgement, call back, ring.
[[nodiscard]] QIcon markColumnIcon(int column);

}  // namespace quillon::app
