#pragma once
// The main window's keys in the per-user settings store (application "Kestrix"): placement in
// twips, language, working directory, port number and the recent files. Values are written as
// text and read back by numeric conversion.

#include <QSettings>
#include <QString>
#include <QStringList>
#include <QWidget>

namespace quillon::app {

inline constexpr const char* kSettingsOrganisation = "Kestrix";
inline constexpr const char* kSettingsApplication = "Kestrix";
inline constexpr int kRecentFileCount = 4;

struct PlacementTwips {
  double left = 1000;
  double top = 1000;
  double width = 11250;
  double height = 7000;
  friend bool operator==(const PlacementTwips&, const PlacementTwips&) = default;
};

struct StartSettings {
  PlacementTwips placement;
  int language = 0;
  QString workDir;
  int portNumber = 1;
  QStringList recentFiles;
};

// Reads the keys in the order start-up reads them; a missing value, one that is not a number (a
// size of zero or less included) or one beyond the 16 bits of the language and port gives the
// default. "MyProfile" is read and not used.
[[nodiscard]] StartSettings readStartSettings(QSettings& settings);

void writePlacement(QSettings& settings, const PlacementTwips& placement);
// "MyProfile" receives the clock text as it stands when the window closes.
void writeCloseSettings(QSettings& settings, const QString& profile, const QString& directory,
                        int language);
void writeRecentFiles(QSettings& settings, const QStringList& files);

// The logical dots per inch of the screen the widget is on.
[[nodiscard]] double screenDpi(const QWidget* widget);
[[nodiscard]] int twipsToPixels(double twips, double dotsPerInch);
[[nodiscard]] double pixelsToTwips(int pixels, double dotsPerInch);

}  // namespace quillon::app
