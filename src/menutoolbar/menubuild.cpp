#include "menutoolbar/menubuild.h"

#include <algorithm>
#include <utility>

#include "menutoolbar/standardcommands.h"
#include "menutoolbar/vcustommenutoolbar.h"

namespace connectdialog {

namespace {

VUnicodeString PromptOf(const VCustomMenuToolbar& commands, std::uint32_t command) {
    VMenuToolbarItem item;
    VUnicodeString prompt;
    if (commands.FindCommand(command, item)) item.GetPrompt(prompt);
    return prompt;
}

/// Makes a menu; the popups that are still open wait in a stack.
class MenuBuilder : public IMenuToolbarBuilder {
  public:
    MenuBuilder(const VCustomMenuToolbar& commands, bool isBar) : commands(commands), isBar(isBar) {}

    void AddItem(const VMenuToolbarItem& item) override {
        VPopupMenu::Entry entry;
        entry.command = static_cast<int>(item.GetCommandId());
        entry.prompt = PromptOf(commands, item.GetCommandId());
        item.GetText(entry.text);
        if (IsInBar()) entry.text = VUnicodeString(entry.text.View().substr(0, entry.text.View().find(u'\t')));
        open.back().second.Add(entry);
    }
    void AddSeparator() override {
        if (!IsInBar()) open.back().second.AddSeparator();
    }
    void BeginPopup(const VUnicodeString& label) override { open.emplace_back(label, VPopupMenu()); }
    void EndPopup() override {
        auto [label, menu] = std::move(open.back());
        open.pop_back();
        open.back().second.AddSubMenu(label, std::move(menu));
    }
    VPopupMenu Take() { return std::move(open.back().second); }

  private:
    bool IsInBar() const { return isBar && open.size() == 1; }

    const VCustomMenuToolbar& commands;
    bool isBar;
    std::vector<std::pair<VUnicodeString, VPopupMenu>> open{1};
};

/// A toolbar has no popups.
class ToolbarBuilder : public IMenuToolbarBuilder {
  public:
    explicit ToolbarBuilder(const VCustomMenuToolbar& commands) : commands(commands) {}

    void AddItem(const VMenuToolbarItem& item) override {
        VToolbarState::Button button;
        button.command = static_cast<int>(item.GetCommandId());
        button.prompt = PromptOf(commands, item.GetCommandId());
        button.picture = GetStandardPicture(item.GetBitmapIndex());
        button.image = item.GetBitmap();
        commands.FindToolTip(item.GetCommandId(), button.tip);
        if (button.tip.IsEmpty()) item.GetFunctionName(button.tip);
        if (button.picture == 0 && button.image == nullptr) button.text = button.tip;
        bar.Add(button);
    }
    void AddSeparator() override { bar.AddSeparator(); }
    void BeginPopup(const VUnicodeString&) override {}
    void EndPopup() override {}

    VToolbarState bar;

  private:
    const VCustomMenuToolbar& commands;
};

/// 0: a description has no name for the key.
std::uint16_t KeyOfCharacter(std::uint16_t character) {
    const bool isDigit = character >= u'0' && character <= u'9';
    const bool isSmall = character >= u'a' && character <= u'z';
    if (isSmall) return static_cast<std::uint16_t>(character - u'a' + u'A');
    return isDigit || (character >= u'A' && character <= u'Z') ? character : std::uint16_t{0};
}

}  // namespace

VPopupMenu MakePopupMenu(const VMenuToolbar& block, const VCustomMenuToolbar& commands) {
    MenuBuilder builder(commands, false);
    BuildMenuToolbar(block, builder);
    return builder.Take();
}

VPopupMenu MakeMenuBar(const VMenuToolbar& block, const VCustomMenuToolbar& commands) {
    MenuBuilder builder(commands, true);
    BuildMenuToolbar(block, builder);
    return builder.Take();
}

VToolbarState MakeToolbar(const VMenuToolbar& block, const VCustomMenuToolbar& commands) {
    ToolbarBuilder builder(commands);
    BuildMenuToolbar(block, builder);
    return std::move(builder.bar);
}

std::vector<Accelerator> MakeAccelerators(const VCustomMenuToolbar& commands) {
    constexpr std::pair<VMenuAccelerator::Flag, Accelerator::Modifier> kModifiers[] = {
        {VMenuAccelerator::kControl, Accelerator::kControl},
        {VMenuAccelerator::kAlt, Accelerator::kAlt},
        {VMenuAccelerator::kShift, Accelerator::kShift},
    };
    std::vector<Accelerator> keys;
    for (const VMenuAccelerator& accelerator : commands.GetAccelerators()) {
        Accelerator key{Accelerator::kNone, KeyOfCharacter(accelerator.key), accelerator.command};
        for (const auto& [flag, modifier] : kModifiers)
            if ((accelerator.flags & flag) != 0) key.modifiers |= modifier;
        // Letters are the same in either case, so two keys of a description may be one here: the first has it.
        const auto isSame = [&](const Accelerator& other) { return IsSameKey(other, key); };
        if (key.key != 0 && std::ranges::none_of(keys, isSame)) keys.push_back(key);
    }
    return keys;
}

}  // namespace connectdialog
