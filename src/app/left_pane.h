#pragma once
// The left pane `picLeft`: drive list, directory list and the list of project files ("*.EAY"),
// with the splitter `imgQuer` between directories and files.

#include <QComboBox>
#include <QFileSystemModel>
#include <QLabel>
#include <QListView>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QTreeView>
#include <QWidget>

namespace quillon::app {

// The project files of one folder. The file system model keeps every folder on the way to a
// folder it has shown and lists it among its parent's files, filter or not; those never show.
class ProjectFileFilter : public QSortFilterProxyModel {
  Q_OBJECT

 public:
  using QSortFilterProxyModel::QSortFilterProxyModel;
  void setFolder(const QModelIndex& folder);

 protected:
  [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

 private:
  QPersistentModelIndex m_folder;
};

class LeftPane : public QWidget {
  Q_OBJECT

 public:
  explicit LeftPane(QWidget* parent = nullptr);

  // The directory list's current path ("MyDir" at shut-down).
  [[nodiscard]] QString directory() const { return m_directory; }
  // Follows a folder: drive, directory list and file list.
  void setDirectory(const QString& path);
  void setCaptions(const QString& drive, const QString& directory, const QString& files);
  // The names the file list shows, in its order.
  [[nodiscard]] QStringList listedFiles() const;

 signals:
  void fileActivated(const QString& path);

 protected:
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void driveChosen(int index);
  void showCurrentFolder();
  QComboBox* m_drives;
  QLabel* m_caption;
  QSplitter* m_split;
  QFileSystemModel* m_dirModel;
  QFileSystemModel* m_fileModel;
  ProjectFileFilter* m_fileFilter;
  QTreeView* m_dirs;
  QListView* m_files;
  QString m_directory;
  bool m_follow = true;  // keep scrolling the tree to the current folder while it loads
};

}  // namespace quillon::app
