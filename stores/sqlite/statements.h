// Every statement of the provider, and the schema with the steps that lead to it.
//
// Two tables make the tree. `tree` is clustered by parent and folded name, so that one scan of it is the listing of a
// folder with names and kinds; `rows` has a key's values in one packed row (packedvalues.h). The ids of `rows` are
// never used twice: an id that once belonged to a path belongs to it as long as its row is there, and a key whose id is
// known is read by one lookup. Row 1 is the root; it has no entry in `tree`. `names` interns the names of values.
//
//   tree.parent   id of the key above
//   tree.folded   folded name, UTF-16 big-endian, so that bytes compare as code units do
//   tree.name     name as it was spelled, in the UTF-8 of wtf8.h
//   tree.kind     6 when the key has the value "Is Session", else 5
//   tree.id       id in rows; larger than its parent's, since a child is made after its parent and ids are never used
//                 twice: a listing asks for that, so that no file can lead round in a circle
//   names.id      1, 2, 3, ... without gaps; folded and spelled as in tree
#pragma once

#include <array>
#include <cstddef>

namespace connectdialog::stores {

enum class Sql : std::size_t {
    kBeginRead,
    kBeginWrite,
    kCommit,
    kRollback,
    kSelectChild,
    kSelectRow,
    kSelectLastId,
    kInsertRow,
    kUpdateRow,
    kInsertChild,
    kUpdateKind,
    kListChildren,
    kListFolders,
    kDeleteRows,
    kDeleteDescendants,
    kDeleteChild,
    kSelectNames,
    kInsertName,
    kCount
};

inline constexpr std::array<const char*, static_cast<std::size_t>(Sql::kCount)> kStatements = {
    "BEGIN",
    "BEGIN IMMEDIATE",
    "COMMIT",
    "ROLLBACK",
    "SELECT id FROM tree WHERE parent = ?1 AND folded = ?2 AND id > ?1",
    "SELECT data FROM rows WHERE id = ?1",
    "SELECT seq FROM sqlite_sequence WHERE name = 'rows'",
    "INSERT INTO rows (id, data) VALUES (?1, ?2)",
    "UPDATE rows SET data = ?2 WHERE id = ?1",
    "INSERT INTO tree (parent, folded, name, kind, id) VALUES (?1, ?2, ?3, ?4, ?5)",
    "UPDATE tree SET kind = ?3 WHERE parent = ?1 AND folded = ?2",
    "SELECT folded, name, kind FROM tree WHERE parent = ?1 AND folded > ?2 AND id > ?1 ORDER BY folded LIMIT ?3",
    "SELECT folded, name, kind FROM tree WHERE parent = ?1 AND folded > ?2 AND id > ?1 AND kind <> 6 "
    "ORDER BY folded LIMIT ?3",
    "WITH RECURSIVE doomed (id) AS (SELECT ?1 UNION SELECT tree.id FROM tree JOIN doomed ON tree.parent = doomed.id) "
    "DELETE FROM rows WHERE id IN doomed",
    "WITH RECURSIVE doomed (id) AS (SELECT ?1 UNION SELECT tree.id FROM tree JOIN doomed ON tree.parent = doomed.id) "
    "DELETE FROM tree WHERE parent IN doomed",
    "DELETE FROM tree WHERE parent = ?1 AND folded = ?2",
    "SELECT id, folded, spelled FROM names WHERE id > ?1 ORDER BY id",
    "INSERT INTO names (id, folded, spelled) VALUES (?1, ?2, ?3)",
};

/// Marks a database file as a store: "BMsd".
inline constexpr int kApplicationId = 0x424D7364;

/// What a connection is set to. The rollback journal with synchronous=EXTRA is the mode in which no acknowledged commit
/// was seen lost at a power loss.
inline constexpr const char* kConnectionPragmas =
    "PRAGMA trusted_schema = OFF; PRAGMA cell_size_check = ON; PRAGMA mmap_size = 0; PRAGMA temp_store = MEMORY;"
    "PRAGMA journal_mode = DELETE; PRAGMA synchronous = EXTRA; PRAGMA cache_size = -8192;";

/// For a file that has no pages yet.
inline constexpr const char* kCreationPragmas = "PRAGMA page_size = 8192;";

/// Step i leads from schema version i to i + 1; the version is kept in the file's user_version. Steps are only added.
inline constexpr std::array kMigrations = {
    "CREATE TABLE rows (id INTEGER PRIMARY KEY AUTOINCREMENT, data BLOB NOT NULL) STRICT;"
    "CREATE TABLE tree (parent INTEGER NOT NULL, folded BLOB NOT NULL, name TEXT NOT NULL, kind INTEGER NOT NULL,"
    "  id INTEGER NOT NULL, PRIMARY KEY (parent, folded)) STRICT, WITHOUT ROWID;"
    "CREATE TABLE names (id INTEGER PRIMARY KEY, folded BLOB NOT NULL, spelled TEXT NOT NULL) STRICT;"
    "INSERT INTO rows (id, data) VALUES (1, x'01');"
    "PRAGMA application_id = 0x424D7364;",
};
inline constexpr int kSchemaVersion = static_cast<int>(kMigrations.size());

}  // namespace connectdialog::stores
