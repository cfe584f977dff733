#pragma once

#include <QString>

/// Who may read the files that the program makes.
namespace tessaro {

/// From now on every file and folder that this program, or a program that it starts, makes is readable by the running
/// user alone. What the user saves to a place of their own gets the rights that the user's umask gives all the same.
void KeepFilesPrivate();

/// While it lives, what is made gets the rights that the user's umask gives: for files that the user saves, and for
/// other programs that are started.
class UsersRights final {
  public:
    UsersRights();
    ~UsersRights();
    UsersRights(const UsersRights&) = delete;
    UsersRights& operator=(const UsersRights&) = delete;

  private:
    unsigned before_;
};

/// Gives a finished file the rights of a file that the user makes; one below OwnFolder() stays private.
void GiveUsersRights(const QString& file);
/// True for what lies below the folder of ours in the data home.
[[nodiscard]] bool IsOwnPlace(const QString& path);

/// Makes a folder, with its parents, that only the running user may enter, or narrows the one that is there. False when
/// it can't be made, or belongs to another user.
[[nodiscard]] bool MakePrivateFolder(const QString& folder);
/// Takes the rights of everybody but the owner away from a folder and all that lies in it. Links are not followed.
void NarrowRights(const QString& folder);

} // namespace tessaro
