#include "app/left_pane.h"

#include <QDir>
#include <QEvent>
#include <QStorageInfo>
#include <QVBoxLayout>

namespace quillon::app {

void ProjectFileFilter::setFolder(const QModelIndex& folder) {
  m_folder = folder;
  invalidateFilter();
}

bool ProjectFileFilter::filterAcceptsRow(int row, const QModelIndex& parent) const {
  // The folders above the listed one must stay, or the list could not be rooted in it.
  if (parent != m_folder) return true;
  const auto* files = static_cast<const QFileSystemModel*>(sourceModel());
  return !files->isDir(files->index(row, 0, parent));
}

LeftPane::LeftPane(QWidget* parent)
    : QWidget(parent),
      m_drives(new QComboBox(this)),
      m_caption(new QLabel(this)),
      m_split(new QSplitter(Qt::Vertical, this)),
      m_dirModel(new QFileSystemModel(this)),
      m_fileModel(new QFileSystemModel(this)),
      m_fileFilter(new ProjectFileFilter(this)),
      m_dirs(new QTreeView(m_split)),
      m_files(new QListView(m_split)) {
  setObjectName("picLeft");
  m_drives->setObjectName("drvLaufwerk");
  m_caption->setObjectName("lblDatei");
  // A long path must not widen the pane; the full path is in the tooltip.
  m_caption->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  m_split->setObjectName("imgQuer");
  m_dirs->setObjectName("dirVerzeichnis");
  m_files->setObjectName("filDateien");

  for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
    if (!volume.isValid() || !volume.isReady()) continue;
    const QString root = volume.rootPath();
    if (m_drives->findData(root) >= 0) continue;
    const QString name = volume.displayName();
    m_drives->addItem(name == root ? root : root + "  [" + name + "]", root);
  }
  if (m_drives->count() == 0) m_drives->addItem(QDir::rootPath(), QDir::rootPath());

  m_dirModel->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot | QDir::Drives);
  m_dirModel->setRootPath(QDir::rootPath());
  m_dirs->setModel(m_dirModel);
  m_dirs->setHeaderHidden(true);
  for (int column = 1; column < m_dirModel->columnCount(); ++column) m_dirs->hideColumn(column);

  m_fileModel->setFilter(QDir::Files);
  m_fileModel->setNameFilters({QStringLiteral("*.EAY")});
  m_fileModel->setNameFilterDisables(false);
  m_fileFilter->setSourceModel(m_fileModel);
  m_files->setModel(m_fileFilter);

  m_split->setChildrenCollapsible(false);
  m_split->setStretchFactor(0, 3);
  m_split->setStretchFactor(1, 2);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(m_drives);
  layout->addWidget(m_caption);
  layout->addWidget(m_split, 1);

  // The model reads folders in the background; show the current one once it is there.
  // The model reads folders in the background; show the current one once its parents are there.
  connect(m_dirModel, &QFileSystemModel::directoryLoaded, this, &LeftPane::showCurrentFolder);
  // The model sorts a folder after loading it, which moves the rows under the view again.
  connect(m_dirModel, &QFileSystemModel::layoutChanged, this, &LeftPane::showCurrentFolder,
          Qt::QueuedConnection);
  connect(m_drives, &QComboBox::activated, this, &LeftPane::driveChosen);
  m_dirs->viewport()->installEventFilter(this);
  connect(m_dirs, &QTreeView::clicked, this, [this](const QModelIndex& index) {
    setDirectory(m_dirModel->filePath(index));
    m_follow = false;
  });
  connect(m_files, &QListView::doubleClicked, this, [this](const QModelIndex& index) {
    const QModelIndex file = m_fileFilter->mapToSource(index);
    if (m_fileModel->isDir(file)) {
      setDirectory(m_fileModel->filePath(file));
    } else {
      emit fileActivated(m_fileModel->filePath(file));
    }
  });
}

bool LeftPane::eventFilter(QObject* watched, QEvent* event) {
  // Once the user works in the tree, it stays where the user puts it.
  if (watched == m_dirs->viewport() &&
      (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::Wheel)) {
    m_follow = false;
  }
  return QWidget::eventFilter(watched, event);
}

void LeftPane::showCurrentFolder() {
  if (!m_follow) return;
  const QModelIndex current = m_dirModel->index(m_directory);
  if (!current.isValid()) return;
  for (QModelIndex folder = current.parent(); folder.isValid(); folder = folder.parent()) {
    if (m_dirModel->canFetchMore(folder)) m_dirModel->fetchMore(folder);
    m_dirs->expand(folder);
  }
  m_dirs->setCurrentIndex(current);
  m_dirs->scrollTo(current, QAbstractItemView::PositionAtCenter);
}

void LeftPane::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  // Scrolling needs the view's final size, which it only has once the window is laid out.
  QMetaObject::invokeMethod(this, &LeftPane::showCurrentFolder, Qt::QueuedConnection);
}

void LeftPane::driveChosen(int index) { setDirectory(m_drives->itemData(index).toString()); }

void LeftPane::setDirectory(const QString& path) {
  const QString folder = QDir(path).absolutePath();
  m_directory = folder;
  m_follow = true;
  // The drive whose root is the longest prefix of the folder.
  int best = -1;
  qsizetype bestLength = -1;
  for (int i = 0; i < m_drives->count(); ++i) {
    const QString root = m_drives->itemData(i).toString();
    if (folder.startsWith(root) && root.size() > bestLength) {
      best = i;
      bestLength = root.size();
    }
  }
  if (best >= 0) m_drives->setCurrentIndex(best);
  showCurrentFolder();
  const QModelIndex root = m_fileModel->setRootPath(folder);
  m_fileFilter->setFolder(root);
  m_files->setRootIndex(m_fileFilter->mapFromSource(root));
  m_caption->setText(QDir::toNativeSeparators(folder));
  m_caption->setToolTip(m_caption->text());
}

QStringList LeftPane::listedFiles() const {
  QStringList names;
  const QModelIndex root = m_files->rootIndex();
  for (int row = 0; row < m_fileFilter->rowCount(root); ++row)
    names << m_fileFilter->index(row, 0, root).data().toString();
  return names;
}

void LeftPane::setCaptions(const QString& drive, const QString& directory, const QString& files) {
  m_drives->setToolTip(drive);
  m_dirs->setToolTip(directory);
  m_files->setToolTip(files);
}

}  // namespace quillon::app
