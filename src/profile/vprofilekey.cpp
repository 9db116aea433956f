#include "profile/vprofilekey.h"

namespace connectdialog {

namespace {
ProfileFactoryGetter factoryGetter = nullptr;
}  // namespace

void SetProfileFactoryGetter(ProfileFactoryGetter getter) {
    factoryGetter = getter;
}

VProfileStoreFactory* GetProfileFactory() {
    return factoryGetter();
}

VProfileStore::VProfileStore(VProfileStoreFactory* factory) : VProfileStore(factory, false) {}
VProfileStore::VProfileStore(bool readOnly) : VProfileStore(nullptr, readOnly) {}
VProfileStore::VProfileStore(VProfileStoreFactory* factory, bool readOnly)
    : impl((factory != nullptr ? factory : GetProfileFactory())->CreateStore()), readOnly(readOnly) {
    root = std::make_unique<VProfileKey>(*this);
}
VProfileStore::~VProfileStore() {
    impl.reset();
}

VProfileKey::VProfileKey(VProfileStore& store) : impl(store.impl->CreateRootKey(store.readOnly)) {}
VProfileKey::VProfileKey(VProfileKey* parent, const char16_t* name, std::uint32_t folder)
    : impl(parent->impl->OpenChild(name, 0, folder)) {}
VProfileKey::~VProfileKey() = default;

bool VProfileKey::ReadDword(const char16_t* name, std::uint32_t& value) {
    return impl->ReadDword(name, value);
}
bool VProfileKey::ReadString(const char16_t* name, VUnicodeString& text) {
    return impl->ReadString(name, text);
}
bool VProfileKey::ReadBinary(const char16_t* name, void* buffer, std::uint32_t& size) {
    return impl->ReadBinary(name, buffer, size);
}
bool VProfileKey::ReadMultiString(const char16_t* name, VStringArray& strings) {
    return impl->ReadMultiString(name, strings);
}
bool VProfileKey::WriteDword(const char16_t* name, std::uint32_t value) {
    return Note(impl->WriteDword(name, value));
}
bool VProfileKey::WriteString(const char16_t* name, const char16_t* text) {
    return Note(impl->WriteString(name, text));
}
bool VProfileKey::WriteBinary(const char16_t* name, const void* data, std::uint32_t size) {
    return Note(impl->WriteBinary(name, data, size));
}
bool VProfileKey::WriteMultiString(const char16_t* name, const VStringArray& strings) {
    return Note(impl->WriteMultiString(name, strings));
}
bool VProfileKey::CopyValues(VProfileKey& source) {
    return Note(impl->CopyValues(*source.impl));
}
bool VProfileKey::DeleteKey(const char16_t* name) {
    return impl->DeleteKey(name);
}
bool VProfileKey::KeyExists(const char16_t* name) {
    return impl->KeyExists(name);
}

VProfileKeyIterator::VProfileKeyIterator(VProfileKey& key, bool byKind) : impl(key.impl->CreateIterator(byKind)) {}
VProfileKeyIterator::VProfileKeyIterator(std::unique_ptr<IProfileIteratorImpl> impl) : impl(std::move(impl)) {}
VProfileFolderIterator::VProfileFolderIterator(VProfileKey& key)
    : VProfileKeyIterator(std::unique_ptr<IProfileIteratorImpl>(key.impl->CreateFolderIterator())) {}
VProfileKeyIterator::~VProfileKeyIterator() = default;
bool VProfileKeyIterator::NextWithKind(VUnicodeString& name, std::uint32_t& kind) {
    return impl->NextWithKind(name, kind);
}
bool VProfileKeyIterator::Next(VUnicodeString& name) {
    return impl->Next(name);
}

}  // namespace connectdialog
