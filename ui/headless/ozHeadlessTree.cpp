#include "ozHeadlessTree.h"

#include <algorithm>

const ozHeadlessTree::Item* ozHeadlessTree::Find(ozTreeItem item) const
{
    auto found = m_items.find(item);
    return found != m_items.end() ? &found->second : nullptr;
}

ozHeadlessTree::Item* ozHeadlessTree::Find(ozTreeItem item)
{
    auto found = m_items.find(item);
    return found != m_items.end() ? &found->second : nullptr;
}

std::vector<ozTreeItem>& ozHeadlessTree::Siblings(ozTreeItem parent)
{
    Item* item = Find(parent);
    return item != nullptr ? item->children : m_top;
}

const std::vector<ozTreeItem>& ozHeadlessTree::Siblings(ozTreeItem parent) const
{
    const Item* item = Find(parent);
    return item != nullptr ? item->children : m_top;
}

ozTreeItem ozHeadlessTree::Find(const std::string& path) const
{
    ozTreeItem parent = ozNoItem;
    std::string::size_type start = 0;
    for (;;) {
        std::string::size_type end = path.find('\\', start);
        std::string text = path.substr(start, end - start);
        ozTreeItem found = ozNoItem;
        for (ozTreeItem child : Siblings(parent))
            if (Find(child)->text == text) {
                found = child;
                break;
            }
        if (found == ozNoItem || end == std::string::npos)
            return found;
        parent = found;
        start = end + 1;
    }
}

int ozHeadlessTree::SelectedImage(ozTreeItem item) const
{
    const Item* found = Find(item);
    return found != nullptr ? found->selectedImage : 0;
}

void ozHeadlessTree::Press(ozTreeItem item)
{
    m_pressed = item;
    if (m_events != nullptr)
        m_events->IconPressed(item);
}

void ozHeadlessTree::Release(ozTreeItem item)
{
    m_pressed = ozNoItem;
    if (m_events != nullptr)
        m_events->IconReleased(item);
}

void ozHeadlessTree::Click(ozTreeItem item)
{
    Press(item);
    Release(item);
}

bool ozHeadlessTree::SelectByUser(ozTreeItem item)
{
    return Select(item);
}

void ozHeadlessTree::ExpandByUser(ozTreeItem item, bool expand)
{
    Item* found = Find(item);
    if (found == nullptr || found->children.empty())
        return;
    if (m_events != nullptr)
        m_events->ItemExpanding(item, expand);
    found->expanded = expand;
}

void ozHeadlessTree::DoubleClick(ozTreeItem item)
{
    if (m_events != nullptr)
        m_events->DoubleClicked(item);
}

void ozHeadlessTree::RightClick(ozTreeItem item)
{
    if (m_events != nullptr)
        m_events->RightClicked(item);
}

void ozHeadlessTree::Key(int virtualKey)
{
    if (m_events != nullptr)
        m_events->KeyPressed(virtualKey);
}

bool ozHeadlessTree::EndLabelEdit(const std::string& text)
{
    ozTreeItem item = m_edited;
    if (item == ozNoItem)
        return false;
    m_edited = ozNoItem;
    if (m_events != nullptr && m_events->LabelEdited(item, &text))
        Text(item, text);
    return true;
}

bool ozHeadlessTree::CancelLabelEdit()
{
    ozTreeItem item = m_edited;
    if (item == ozNoItem)
        return false;
    m_edited = ozNoItem;
    if (m_events != nullptr)
        m_events->LabelEdited(item, nullptr);
    return true;
}

void ozHeadlessTree::DeleteAll()
{
    m_items.clear();
    m_top.clear();
    m_selection = m_pressed = m_edited = ozNoItem;
}

ozTreeItem ozHeadlessTree::Append(ozTreeItem parent, const std::string& text, int image,
                                  int selectedImage, bool expanded, void* data)
{
    if (parent != ozNoItem && Find(parent) == nullptr)
        return ozNoItem;
    ozTreeItem item = m_next++;
    m_items[item] = Item{text, image, selectedImage, expanded, data, parent, {}};
    Siblings(parent).push_back(item);
    return item;
}

void ozHeadlessTree::Forget(ozTreeItem item)
{
    Item* found = Find(item);
    if (found == nullptr)
        return;
    for (ozTreeItem child : std::vector<ozTreeItem>(found->children))
        Forget(child);
    if (m_pressed == item)
        m_pressed = ozNoItem;
    if (m_edited == item)
        m_edited = ozNoItem;
    m_items.erase(item);
}

void ozHeadlessTree::Delete(ozTreeItem item)
{
    const Item* found = Find(item);
    if (found == nullptr)
        return;
    for (ozTreeItem at = m_selection; at != ozNoItem; at = Parent(at))
        if (at == item)
            m_selection = ozNoItem;
    std::vector<ozTreeItem>& siblings = Siblings(found->parent);
    siblings.erase(std::find(siblings.begin(), siblings.end(), item));
    Forget(item);
}

void ozHeadlessTree::Text(ozTreeItem item, const std::string& text)
{
    if (Item* found = Find(item))
        found->text = text;
}

void ozHeadlessTree::Image(ozTreeItem item, int image, int selectedImage)
{
    if (Item* found = Find(item)) {
        found->image = image;
        found->selectedImage = selectedImage;
    }
}

void ozHeadlessTree::Expand(ozTreeItem item, bool expanded)
{
    if (Item* found = Find(item))
        found->expanded = expanded;
}

bool ozHeadlessTree::Select(ozTreeItem item)
{
    if (item != ozNoItem && Find(item) == nullptr)
        return false;
    if (item == m_selection)
        return true;
    if (m_events != nullptr && !m_events->SelectionChanging(m_selection, item))
        return false;
    m_selection = item;
    if (m_events != nullptr)
        m_events->SelectionChanged(item);
    return true;
}

void ozHeadlessTree::EnsureVisible(ozTreeItem item)
{
    for (ozTreeItem parent = Parent(item); parent != ozNoItem; parent = Parent(parent))
        Expand(parent, true);
}

void ozHeadlessTree::EditLabel(ozTreeItem item)
{
    if (Find(item) != nullptr)
        m_edited = item;
}

void* ozHeadlessTree::Data(ozTreeItem item) const
{
    const Item* found = Find(item);
    return found != nullptr ? found->data : nullptr;
}

std::string ozHeadlessTree::Text(ozTreeItem item) const
{
    const Item* found = Find(item);
    return found != nullptr ? found->text : std::string();
}

int ozHeadlessTree::Image(ozTreeItem item) const
{
    const Item* found = Find(item);
    return found != nullptr ? found->image : 0;
}

bool ozHeadlessTree::Expanded(ozTreeItem item) const
{
    const Item* found = Find(item);
    return found != nullptr && found->expanded;
}

ozTreeItem ozHeadlessTree::Root() const
{
    return m_top.empty() ? ozNoItem : m_top.front();
}

ozTreeItem ozHeadlessTree::Parent(ozTreeItem item) const
{
    const Item* found = Find(item);
    return found != nullptr ? found->parent : ozNoItem;
}

ozTreeItem ozHeadlessTree::FirstChild(ozTreeItem item) const
{
    const Item* found = Find(item);
    return found != nullptr && !found->children.empty() ? found->children.front() : ozNoItem;
}

ozTreeItem ozHeadlessTree::NextSibling(ozTreeItem item) const
{
    const Item* found = Find(item);
    if (found == nullptr)
        return ozNoItem;
    const std::vector<ozTreeItem>& siblings = Siblings(found->parent);
    auto at = std::find(siblings.begin(), siblings.end(), item);
    return at + 1 < siblings.end() ? *(at + 1) : ozNoItem;
}
