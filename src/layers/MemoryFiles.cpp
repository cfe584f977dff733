#include "layers/MemoryFiles.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace tessaro {

namespace {

thread_local const std::map<std::string, QByteArray>* current = nullptr;

struct OpenFile {
    const QByteArray& bytes;
    SAOffset position = 0;

    [[nodiscard]] SAOffset Size() const { return static_cast<SAOffset>(bytes.size()); }
};

OpenFile* FileOf(SAFile file) {
    return reinterpret_cast<OpenFile*>(file);
}

SAFile Open(const char* name, const char* /*access*/) {
    const std::string path(name);
    std::string ending = path.substr(path.rfind('.') + 1);
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    const auto found = current->find(ending);
    return found == current->end() ? nullptr : reinterpret_cast<SAFile>(new OpenFile{found->second});
}

/// Like fread, it also gives the bytes of a last item that is cut short.
SAOffset Read(void* target, SAOffset size, SAOffset count, SAFile file) {
    OpenFile& open = *FileOf(file);
    if (size == 0 || open.position >= open.Size()) return 0;
    const SAOffset left = open.Size() - open.position;
    const SAOffset bytes = count > left / size ? left : count * size;
    std::memcpy(target, open.bytes.constData() + open.position, bytes);
    open.position += bytes;
    return bytes / size;
}

SAOffset Seek(SAFile file, SAOffset offset, int whence) {
    OpenFile& open = *FileOf(file);
    const SAOffset base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? open.position : open.Size();
    open.position = base + offset;
    return 0;
}

SAOffset Tell(SAFile file) {
    return FileOf(file)->position;
}

SAOffset Write(void* /*source*/, SAOffset /*size*/, SAOffset /*count*/, SAFile /*file*/) {
    return 0;
}

int Flush(SAFile /*file*/) {
    return 0;
}

int Close(SAFile file) {
    delete FileOf(file);
    return 0;
}

int Remove(const char* /*name*/) {
    return -1;
}

void Error(const char* /*message*/) {}

/// Numbers of a file, whatever the locale.
double Number(const char* text) {
    return QByteArray(text).trimmed().toDouble();
}

} // namespace

MemoryFiles::MemoryFiles(const std::map<std::string, QByteArray>& files)
    : hooks_{&Open, &Read, &Write, &Seek, &Tell, &Flush, &Close, &Remove, &Error, &Number} {
    current = &files;
}

MemoryFiles::~MemoryFiles() {
    current = nullptr;
}

} // namespace tessaro
