#include "ozHeadlessTree.h"

const ozHeadlessTree::Item* ozHeadlessTree::Find(ozTreeItem item) const
{
    if (item == ozNoItem || item > m_items.size() || m_items[item - 1].deleted)
        return nullptr;
    return &m_items[item - 1];
}

ozHeadlessTree::Item* ozHeadlessTree::Find(ozTreeItem item)
{
    return const_cast<Item*>(static_cast<const ozHeadlessTree*>(this)->Find(item));
}

ozTreeItem ozHeadlessTree::Find(const std::string& path) const
{
    ozTreeItem parent = ozNoItem;
    std::string::size_type start = 0;
    for (;;) {
        std::string::size_type end = path.find('\\', start);
        std::string text = path.substr(start, end - start);
        ozTreeItem found = parent == ozNoItem ? m_firstTop : FirstChild(parent);
        while (found != ozNoItem && Find(found)->text != text)
            found = Find(found)->next;
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
    if (found == nullptr || (found->firstChild == ozNoItem && !found->childrenLater))
        return;
    if (m_events != nullptr)
        m_events->ItemExpanding(item, expand);
    // The view may have added children meanwhile, which moves the items in memory.
    if (Item* expanded = Find(item))
        expanded->expanded = expand;
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
    m_firstTop = m_lastTop = ozNoItem;
    m_selection = m_pressed = m_edited = ozNoItem;
}

void ozHeadlessTree::ChildrenLater(ozTreeItem item)
{
    if (Item* found = Find(item))
        found->childrenLater = true;
}

bool ozHeadlessTree::ChildrenToCome(ozTreeItem item) const
{
    const Item* found = Find(item);
    return found != nullptr && found->childrenLater;
}

ozTreeItem ozHeadlessTree::Append(ozTreeItem parent, const std::string& text, int image,
                                  int selectedImage, bool expanded, void* data)
{
    if (parent != ozNoItem && Find(parent) == nullptr)
        return ozNoItem;
    ozTreeItem last = parent == ozNoItem ? m_lastTop : Find(parent)->lastChild;
    Item added;
    added.text = text;
    added.image = image;
    added.selectedImage = selectedImage;
    added.expanded = expanded;
    added.data = data;
    return Link(parent, last, std::move(added));
}

ozTreeItem ozHeadlessTree::InsertAfter(ozTreeItem parent, ozTreeItem after, const std::string& text,
                                       int image, int selectedImage, void* data)
{
    if ((parent != ozNoItem && Find(parent) == nullptr) ||
        (after != ozNoItem && (Find(after) == nullptr || Find(after)->parent != parent)))
        return ozNoItem;
    Item added;
    added.text = text;
    added.image = image;
    added.selectedImage = selectedImage;
    added.data = data;
    return Link(parent, after, std::move(added));
}

ozTreeItem ozHeadlessTree::Link(ozTreeItem parent, ozTreeItem previous, Item added)
{
    ozTreeItem next = previous != ozNoItem ? m_items[previous - 1].next
                      : parent == ozNoItem ? m_firstTop
                                           : m_items[parent - 1].firstChild;
    added.parent = parent;
    added.previous = previous;
    added.next = next;
    m_items.push_back(std::move(added));
    ozTreeItem item = m_items.size();
    if (previous != ozNoItem)
        m_items[previous - 1].next = item;
    else
        (parent == ozNoItem ? m_firstTop : m_items[parent - 1].firstChild) = item;
    if (next != ozNoItem)
        m_items[next - 1].previous = item;
    else
        (parent == ozNoItem ? m_lastTop : m_items[parent - 1].lastChild) = item;
    if (parent != ozNoItem)
        m_items[parent - 1].childrenLater = false;
    return item;
}

void ozHeadlessTree::Forget(ozTreeItem item)
{
    for (ozTreeItem child = m_items[item - 1].firstChild; child != ozNoItem;
         child = m_items[child - 1].next)
        Forget(child);
    if (m_pressed == item)
        m_pressed = ozNoItem;
    if (m_edited == item)
        m_edited = ozNoItem;
    if (m_selection == item)
        m_selection = ozNoItem;
    m_items[item - 1].deleted = true;
}

void ozHeadlessTree::Delete(ozTreeItem item)
{
    Item* found = Find(item);
    if (found == nullptr)
        return;
    ozTreeItem parent = found->parent, previous = found->previous, next = found->next;
    Forget(item);
    if (previous != ozNoItem)
        m_items[previous - 1].next = next;
    else if (parent == ozNoItem)
        m_firstTop = next;
    else
        m_items[parent - 1].firstChild = next;
    if (next != ozNoItem)
        m_items[next - 1].previous = previous;
    else if (parent == ozNoItem)
        m_lastTop = previous;
    else
        m_items[parent - 1].lastChild = previous;
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
    return m_firstTop;
}

ozTreeItem ozHeadlessTree::Parent(ozTreeItem item) const
{
    const Item* found = Find(item);
    return found != nullptr ? found->parent : ozNoItem;
}

ozTreeItem ozHeadlessTree::FirstChild(ozTreeItem item) const
{
    const Item* found = Find(item);
    return found != nullptr ? found->firstChild : ozNoItem;
}

ozTreeItem ozHeadlessTree::NextSibling(ozTreeItem item) const
{
    const Item* found = Find(item);
    return found != nullptr ? found->next : ozNoItem;
}
