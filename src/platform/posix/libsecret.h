// The part of libsecret and GLib that is used here, bound at run time.
//
// Types and constants are those of the published binary interface of libsecret 0.18 and later and GLib 2.
#pragma once

#include <cstddef>

namespace connectdialog::platform::libsecret {

struct Service;
struct Collection;
struct Item;
struct Value;
struct Cancellable;
struct Table;
struct Error;

struct List {
    void* data;
    List* next;
    List* previous;
};

struct Schema {
    const char* name;
    int flags;
    struct {
        const char* name;
        int type;
    } attributes[32];
    int reserved;
    void* reservedPointers[7];
};

inline constexpr int kAttributeString = 0;
inline constexpr int kOpenSession = 1 << 1;
inline constexpr int kSearchAll = 1 << 1;
inline constexpr int kSearchLoadSecrets = 1 << 3;

// NOLINTBEGIN(readability-identifier-naming): the names are the libraries'
struct Functions {
    Service* (*secret_service_get_sync)(int flags, Cancellable* cancellable, Error** error);
    List* (*secret_service_search_sync)(Service* service, const Schema* schema, Table* attributes, int flags,
                                        Cancellable* cancellable, Error** error);
    int (*secret_item_get_locked)(Item* item);
    Value* (*secret_item_get_secret)(Item* item);
    const char* (*secret_value_get)(Value* value, std::size_t* length);
    Value* (*secret_value_new)(const char* secret, std::ptrdiff_t length, const char* contentType);
    void (*secret_value_unref)(void* value);
    Collection* (*secret_collection_for_alias_sync)(Service* service, const char* alias, int flags,
                                                    Cancellable* cancellable, Error** error);
    int (*secret_collection_get_locked)(Collection* collection);
    Item* (*secret_item_create_sync)(Collection* collection, const Schema* schema, Table* attributes, const char* label,
                                     Value* value, int flags, Cancellable* cancellable, Error** error);
    Cancellable* (*g_cancellable_new)();
    void (*g_cancellable_cancel)(Cancellable* cancellable);
    void (*g_object_unref)(void* object);
    void (*g_error_free)(Error* error);
    void (*g_list_free)(List* list);
    unsigned int (*g_str_hash)(const void* text);
    int (*g_str_equal)(const void* a, const void* b);
    Table* (*g_hash_table_new)(unsigned int (*hash)(const void*), int (*equal)(const void*, const void*));
    int (*g_hash_table_insert)(Table* table, void* key, void* value);
    void (*g_hash_table_unref)(Table* table);
};
// NOLINTEND(readability-identifier-naming)

/// Null when the library is not there or lacks a function. It stays loaded: its types cannot be unloaded.
const Functions* Load();

}  // namespace connectdialog::platform::libsecret
