#include "controls/KeyedTreeModel.h"

namespace tessaro {

KeyedTreeModel::KeyedTreeModel(QObject* parent) : QAbstractItemModel(parent) {
    Clear();
}

void KeyedTreeModel::Clear() {
    beginResetModel();
    nodes_.clear();
    byKey_.clear();
    Node top;
    top.loaded = true;
    top.parent = -1;
    nodes_.push_back(top);
    byKey_.insert(QString(), 0);
    endResetModel();
}

void KeyedTreeModel::AddNodes(const QString& parentKey, std::vector<KeyedNode> nodes) {
    const int parent = byKey_.value(parentKey, -1);
    if (parent < 0) return;
    const auto parentAt = static_cast<std::size_t>(parent);
    std::erase_if(nodes, [this](const KeyedNode& node) { return byKey_.contains(node.key); });
    if (nodes.empty()) return;
    const int first = static_cast<int>(nodes_[parentAt].children.size());
    beginInsertRows(IndexOf(parent), first, first + static_cast<int>(nodes.size()) - 1);
    nodes_.reserve(nodes_.size() + nodes.size());
    for (KeyedNode& node : nodes) {
        const int at = static_cast<int>(nodes_.size());
        byKey_.insert(node.key, at);
        const int row = static_cast<int>(nodes_[parentAt].children.size());
        nodes_[parentAt].children.push_back(at);
        nodes_.push_back({node.key, node.text, node.global, !node.mayHaveChildren, parent, row, {}});
    }
    endInsertRows();
}

void KeyedTreeModel::SetText(const QString& key, const QString& text) {
    const int node = byKey_.value(key, -1);
    if (node <= 0) return;
    nodes_[static_cast<std::size_t>(node)].text = text;
    Q_EMIT dataChanged(IndexOf(node), IndexOf(node));
}

void KeyedTreeModel::Load(int node) {
    Node& entry = nodes_[static_cast<std::size_t>(node)];
    if (entry.loaded || !loader_) return;
    entry.loaded = true;
    const QString key = entry.key; // the call may add nodes and move the entry
    std::vector<KeyedNode> children = loader_(key);
    if (children.empty()) {
        const QModelIndex index = IndexOf(node);
        Q_EMIT dataChanged(index, index); // the arrow goes
        return;
    }
    AddNodes(key, std::move(children));
}

void KeyedTreeModel::LoadChildren(const QString& key) {
    const int node = byKey_.value(key, -1);
    if (node > 0) Load(node);
}

bool KeyedTreeModel::IsLoaded(const QString& key) const {
    const int node = byKey_.value(key, -1);
    return node >= 0 && nodes_[static_cast<std::size_t>(node)].loaded;
}

int KeyedTreeModel::NodeOf(const QModelIndex& index) const {
    return index.isValid() ? static_cast<int>(index.internalId()) : 0;
}

QModelIndex KeyedTreeModel::IndexOf(int node) const {
    if (node <= 0) return {};
    return createIndex(nodes_[static_cast<std::size_t>(node)].row, 0, static_cast<quintptr>(node));
}

QModelIndex KeyedTreeModel::IndexOfKey(const QString& key) const {
    return IndexOf(byKey_.value(key, -1));
}

QString KeyedTreeModel::KeyAt(const QModelIndex& index) const {
    return nodes_[static_cast<std::size_t>(NodeOf(index))].key;
}

QString KeyedTreeModel::ParentKey(const QString& key) const {
    const int node = byKey_.value(key, -1);
    if (node <= 0) return {};
    return nodes_[static_cast<std::size_t>(nodes_[static_cast<std::size_t>(node)].parent)].key;
}

QModelIndex KeyedTreeModel::index(int row, int column, const QModelIndex& parent) const {
    const Node& above = nodes_[static_cast<std::size_t>(NodeOf(parent))];
    if (column != 0 || row < 0 || row >= static_cast<int>(above.children.size())) return {};
    return createIndex(row, 0, static_cast<quintptr>(above.children[static_cast<std::size_t>(row)]));
}

QModelIndex KeyedTreeModel::parent(const QModelIndex& child) const {
    return child.isValid() ? IndexOf(nodes_[static_cast<std::size_t>(NodeOf(child))].parent) : QModelIndex();
}

int KeyedTreeModel::rowCount(const QModelIndex& parent) const {
    return static_cast<int>(nodes_[static_cast<std::size_t>(NodeOf(parent))].children.size());
}

int KeyedTreeModel::columnCount(const QModelIndex& /*parent*/) const {
    return 1;
}

bool KeyedTreeModel::hasChildren(const QModelIndex& parent) const {
    const Node& node = nodes_[static_cast<std::size_t>(NodeOf(parent))];
    return !node.loaded || !node.children.empty();
}

bool KeyedTreeModel::canFetchMore(const QModelIndex& parent) const {
    return !nodes_[static_cast<std::size_t>(NodeOf(parent))].loaded;
}

void KeyedTreeModel::fetchMore(const QModelIndex& parent) {
    Load(NodeOf(parent));
}

QVariant KeyedTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const Node& node = nodes_[static_cast<std::size_t>(NodeOf(index))];
    switch (role) {
    case Qt::DisplayRole:
        return CellTextOf(node.text);
    case Qt::ToolTipRole:
        return TipOf(node.text);
    case Qt::DecorationRole:
        return icon_.isNull() ? QVariant() : QVariant(icon_);
    case Qt::ForegroundRole:
        return node.global && globalColor_.isValid() ? QVariant(globalColor_) : QVariant();
    case Qt::UserRole:
        return node.key;
    default:
        return {};
    }
}

} // namespace tessaro
