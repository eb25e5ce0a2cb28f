#include "ZKFileFinder.h"

#include "ZKDisk.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>

struct ZKFileFinder::Listing {
    QStringList names;
    int next = 0;
    bool listed = false;
};

namespace {

// Kept: Files and Folders trade places with Qt's Dirs and Files bits; of the
// rest only drives, links, permissions, modified, hidden, system, no "." and
// no ".." pass.
QDir::Filters toQtFilters(int flags) {
    const int swapped = ((flags & 0x1) << 1) | ((flags & 0x2) >> 1);
    return QDir::Filters(swapped | (flags & 0x63FC));
}

} // namespace

ZKFileFinder::ZKFileFinder() : m_listing(new Listing) {}

ZKFileFinder::~ZKFileFinder() {
    deleteNativeObject();
}

void ZKFileFinder::restart() {
    if (m_listing)
        m_listing->listed = false;
}

void ZKFileFinder::setFolder(const ZKStringW& folder) {
    m_folder = folder;
    restart();
}

void ZKFileFinder::setFileSpec(const ZKStringW& spec) {
    m_fileSpecs.clear();
    m_fileSpecs.push_back(spec);
    restart();
}

void ZKFileFinder::addFileSpec(const ZKStringW& spec) {
    m_fileSpecs.push_back(spec);
    restart();
}

void ZKFileFinder::setFileSpecs(const ZKStaticArray<ZKStringW>& specs) {
    m_fileSpecs.clear();
    m_fileSpecs.reserve(specs.size());
    for (const ZKStringW& spec : specs)
        m_fileSpecs.push_back(spec);
    restart();
}

void ZKFileFinder::setFlag(int flag, bool on) {
    m_flags = on ? (m_flags | flag) : (m_flags & ~flag);
    restart();
}

bool ZKFileFinder::findNext(ZKStringW& name) {
    updateNativeObject();
    Listing& listing = *m_listing;
    if (!listing.listed) {
        listing.listed = true;
        QDir dir(m_folder);
        QStringList patterns;
        patterns.reserve(int(m_fileSpecs.size()));
        for (const ZKStringW& spec : m_fileSpecs)
            patterns.append(spec);
        dir.setNameFilters(patterns);
        listing.names = dir.entryList(toQtFilters(m_flags));
        listing.next = 0;
    }
    if (listing.next >= listing.names.size())
        return false;
    name = listing.names.at(listing.next++);
    return true;
}

ZKStringW ZKFileFinder::findNext() {
    ZKStringW name;
    return findNext(name) ? name : ZKStringW();
}

bool ZKFileFinder::extractAllFilesInFolder(ZKArray<ZKStringW>& files) {
    // One reservation for the whole walk: reserving again in every folder
    // would grow the array by exact steps, copying it once per folder.
    files.reserve(files.size() + 100);
    ZKArray<ZKStringW> enclosing;
    return extractAll(files, enclosing);
}

// `enclosing` holds the canonical paths of the folders being walked above this
// one, so that a link back to one of them is not followed round in circles.
bool ZKFileFinder::extractAll(ZKArray<ZKStringW>& files, ZKArray<ZKStringW>& enclosing) {
    if (!ZKDisk::folderExists(m_folder))
        return false;
    const ZKStringW folder = m_folder;

    // Kept: the finder's own flags lose the Folders bit here and keep it lost.
    m_flags = (m_flags & ~Folders) | NoDot | NoDotDot;
    restart();
    ZKStringW name;
    while (findNext(name))
        files.push_back(ZKDisk::concatPathAndFileName(folder, name));

    ZKFileFinder subFolders;
    subFolders.setFolder(folder);
    // The same attributes, folders instead of files; NoDot and NoDotDot, set
    // above, keep "." and ".." out of both listings.
    subFolders.m_flags = (m_flags & ~Files) | Folders;
    enclosing.push_back(ZKStringW(QFileInfo(folder).canonicalFilePath()));
    while (subFolders.findNext(name)) {
        const ZKStringW sub = ZKDisk::concatPathAndFileName(folder, name);
        const ZKStringW canonical(QFileInfo(sub).canonicalFilePath());
        if (std::find(enclosing.begin(), enclosing.end(), canonical) != enclosing.end())
            continue;
        setFolder(sub);
        extractAll(files, enclosing);
    }
    enclosing.pop_back();

    setFolder(folder);
    return true;
}

void ZKFileFinder::updateNativeObject() {
    if (!m_listing)
        m_listing = new Listing;
}

void ZKFileFinder::deleteNativeObject() {
    delete m_listing;
    m_listing = nullptr;
}

void ZKFileFinder::rewind() {}

void ZKFileFinder::close() {}
