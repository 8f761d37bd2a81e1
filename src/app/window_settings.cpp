#include "app/window_settings.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>

namespace quillon::app {
namespace {

constexpr double kTwipsPerInch = 1440.0;
// Far beyond any screen, and far from where pixel arithmetic overflows.
constexpr double kFarthestPixel = 1 << 24;

// "nan" and "inf" read as numbers, but they place nothing.
double readNumber(QSettings& settings, const QString& key, double fallback) {
  bool ok = false;
  const double value = settings.value(key).toString().toDouble(&ok);
  return ok && std::isfinite(value) ? value : fallback;
}

// A size of nothing or less is no size.
double readSize(QSettings& settings, const QString& key, double fallback) {
  const double value = readNumber(settings, key, fallback);
  return value > 0 ? value : fallback;
}

// The settings hold 16-bit integers; a value beyond them is no such number.
int readInteger(QSettings& settings, const QString& key, int fallback) {
  bool ok = false;
  const short value = settings.value(key).toString().trimmed().toShort(&ok);
  return ok ? value : fallback;
}

QString recentKey(int index) { return QStringLiteral("Recent%1").arg(index + 1); }

}  // namespace

StartSettings readStartSettings(QSettings& settings) {
  StartSettings result;
  settings.beginGroup("Settings");
  result.placement.left = readNumber(settings, "MainLeft", result.placement.left);
  result.placement.top = readNumber(settings, "MainTop", result.placement.top);
  result.placement.width = readSize(settings, "MainWidth", result.placement.width);
  result.placement.height = readSize(settings, "MainHeight", result.placement.height);
  (void)settings.value("MyProfile", "Standard");
  settings.endGroup();

  settings.beginGroup("Language");
  result.language = readInteger(settings, "MyLang", 0);
  settings.endGroup();

  settings.beginGroup("Settings");
  result.workDir = settings.value("MyDir", QString()).toString();
  for (int i = 0; i < kRecentFileCount; ++i) {
    const QString file = settings.value(recentKey(i)).toString();
    if (!file.isEmpty()) result.recentFiles << file;
  }
  settings.endGroup();

  settings.beginGroup("Einstellungen");
  result.portNumber = readInteger(settings, "ComNr", 1);
  settings.endGroup();
  return result;
}

void writePlacement(QSettings& settings, const PlacementTwips& placement) {
  settings.beginGroup("Settings");
  settings.setValue("MainLeft", QString::number(placement.left));
  settings.setValue("MainTop", QString::number(placement.top));
  settings.setValue("MainWidth", QString::number(placement.width));
  settings.setValue("MainHeight", QString::number(placement.height));
  settings.endGroup();
}

void writeCloseSettings(QSettings& settings, const QString& profile, const QString& directory,
                        int language) {
  settings.beginGroup("Settings");
  settings.setValue("MyProfile", profile);
  settings.setValue("MyDir", directory);
  settings.endGroup();
  settings.beginGroup("Language");
  settings.setValue("MyLang", QString::number(language));
  settings.endGroup();
}

void writeRecentFiles(QSettings& settings, const QStringList& files) {
  settings.beginGroup("Settings");
  for (int i = 0; i < kRecentFileCount; ++i) {
    if (i < files.size()) {
      settings.setValue(recentKey(i), files[i]);
    } else {
      settings.remove(recentKey(i));
    }
  }
  settings.endGroup();
}

double screenDpi(const QWidget* widget) {
  const QScreen* screen = widget->screen() ? widget->screen() : QGuiApplication::primaryScreen();
  return screen ? screen->logicalDotsPerInch() : 96.0;
}

int twipsToPixels(double twips, double dotsPerInch) {
  const double pixels = twips * dotsPerInch / kTwipsPerInch;
  return static_cast<int>(std::lround(std::clamp(pixels, -kFarthestPixel, kFarthestPixel)));
}

double pixelsToTwips(int pixels, double dotsPerInch) {
  return std::round(pixels * kTwipsPerInch / dotsPerInch);
}

}  // namespace quillon::app
