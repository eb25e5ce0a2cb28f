// ZKFileFinder.h: lists the entries of one folder, one name at a time.
//
// A finder holds a folder, a list of name patterns (Qt wildcards such as
// "*.png"; none means every name) and kind and attribute flags. The folder is
// listed on the first findNext after any change of the three, then handed out
// entry by entry as bare names (not paths), in Qt's listing order (by name,
// ignoring case). Every setter restarts the listing; rewind() does not.
//
// The flags are Qt's QDir::Filter bits with the two lowest swapped: Files is 1
// and Folders is 2 here. Only the bits named in Flag are used; the others
// (Qt's all-folders and case-sensitivity bits among them) are ignored, so the
// patterns never depend on case and a pattern applies to folders as well.
//
// Ownership: the finder owns its patterns and its listing. It cannot be
// copied. Threads: one finder must not be used from two threads at once.
#pragma once

#include "ZKArray.h"
#include "ZKExport.h"
#include "ZKStringW.h"

class ZKUTILS_EXPORT ZKFileFinder {
public:
    enum Flag {
        Files = 0x0001,
        Folders = 0x0002,
        Drives = 0x0004,
        NoSymLinks = 0x0008,
        Readable = 0x0010,
        Writable = 0x0020,
        Executable = 0x0040,
        Modified = 0x0080,
        Hidden = 0x0100,
        System = 0x0200,
        NoDot = 0x2000,
        NoDotDot = 0x4000,
        // Files and folders, no links, any permission, system entries, but no
        // hidden entries and neither "." nor "..".
        DefaultFlags = 0x62FB
    };

    ZKFileFinder();
    ~ZKFileFinder();
    ZKFileFinder(const ZKFileFinder&) = delete;
    ZKFileFinder& operator=(const ZKFileFinder&) = delete;

    // Each setter restarts the listing.
    void setFolder(const ZKStringW& folder);
    // The pattern list becomes exactly `spec`.
    void setFileSpec(const ZKStringW& spec);
    void addFileSpec(const ZKStringW& spec);
    void setFileSpecs(const ZKStaticArray<ZKStringW>& specs);
    // Sets (on) or clears the bits of `flag`.
    void setFlag(int flag, bool on);

    const ZKStringW& getFolder() const { return m_folder; }
    const ZKArray<ZKStringW>& getFileSpecs() const { return m_fileSpecs; }
    int getFlags() const { return m_flags; }

    // The next entry name; false, `name` untouched, when the listing is used
    // up (a missing folder lists nothing). It stays used up until a setter is
    // called.
    bool findNext(ZKStringW& name);
    // The next entry name, or an empty string when there is none.
    ZKStringW findNext();

    // Appends the full paths of the files that match the patterns in the
    // folder and, depth first, in every sub-folder the flags let through
    // (sub-folders are found whatever the patterns): all files of a folder
    // come before those of its sub-folders. A folder reached again through a
    // link is not entered twice. False, `files` untouched, when the folder
    // does not exist. Afterwards the folder is as before, but the flags keep
    // the Folders bit cleared and NoDot and NoDotDot set, and the listing
    // restarts.
    bool extractAllFilesInFolder(ZKArray<ZKStringW>& files);

    // Creates the listing if there is none.
    void updateNativeObject();
    // Drops the listing; the next findNext starts a fresh one.
    void deleteNativeObject();
    // Do nothing: rewind() does not restart the listing (call a setter).
    void rewind();
    void close();

private:
    struct Listing;

    void restart();
    bool extractAll(ZKArray<ZKStringW>& files, ZKArray<ZKStringW>& enclosing);

    ZKStringW m_folder;
    ZKArray<ZKStringW> m_fileSpecs;
    int m_flags = DefaultFlags;
    Listing* m_listing = nullptr;
};
