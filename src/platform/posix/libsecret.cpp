#include "platform/posix/libsecret.h"

#include "platform/modules.h"

namespace connectdialog::platform::libsecret {

namespace {

template <class Function>
bool Bind(ModuleHandle module, const char* name, Function& function) {
    function = reinterpret_cast<Function>(FindSymbol(module, name));
    return function != nullptr;
}

const Functions* LoadFunctions() {
    // The functions of GLib are found through it too: it depends on them.
    const ModuleHandle module = LoadModule(u"libsecret-1.so.0");
    if (module == nullptr) return nullptr;
    static Functions f;
    const bool isWhole =
        Bind(module, "secret_service_get_sync", f.secret_service_get_sync) &&
        Bind(module, "secret_service_search_sync", f.secret_service_search_sync) &&
        Bind(module, "secret_item_get_locked", f.secret_item_get_locked) &&
        Bind(module, "secret_item_get_secret", f.secret_item_get_secret) &&
        Bind(module, "secret_value_get", f.secret_value_get) && Bind(module, "secret_value_new", f.secret_value_new) &&
        Bind(module, "secret_value_unref", f.secret_value_unref) &&
        Bind(module, "secret_collection_for_alias_sync", f.secret_collection_for_alias_sync) &&
        Bind(module, "secret_collection_get_locked", f.secret_collection_get_locked) &&
        Bind(module, "secret_item_create_sync", f.secret_item_create_sync) &&
        Bind(module, "g_cancellable_new", f.g_cancellable_new) &&
        Bind(module, "g_cancellable_cancel", f.g_cancellable_cancel) &&
        Bind(module, "g_object_unref", f.g_object_unref) && Bind(module, "g_error_free", f.g_error_free) &&
        Bind(module, "g_list_free", f.g_list_free) && Bind(module, "g_str_hash", f.g_str_hash) &&
        Bind(module, "g_str_equal", f.g_str_equal) && Bind(module, "g_hash_table_new", f.g_hash_table_new) &&
        Bind(module, "g_hash_table_insert", f.g_hash_table_insert) &&
        Bind(module, "g_hash_table_unref", f.g_hash_table_unref);
    return isWhole ? &f : nullptr;
}

}  // namespace

const Functions* Load() {
    static const Functions* const functions = LoadFunctions();
    return functions;
}

}  // namespace connectdialog::platform::libsecret
