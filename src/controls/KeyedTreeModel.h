#pragma once

#include "controls/KeyedItem.h"

#include <QAbstractItemModel>
#include <QColor>
#include <QHash>
#include <QIcon>

#include <functional>
#include <vector>

namespace tessaro {

/// A tree of keyed nodes whose children are asked for once, when a node is first opened or clicked.
class KeyedTreeModel final : public QAbstractItemModel {
    Q_OBJECT

  public:
    /// Gives the children of the node of this key.
    using Loader = std::function<std::vector<KeyedNode>(const QString& key)>;

    explicit KeyedTreeModel(QObject* parent = nullptr);

    void SetLoader(Loader loader) { loader_ = std::move(loader); }
    void SetIcons(const QIcon& closed) { icon_ = closed; }
    void SetGlobalColor(const QColor& color) { globalColor_ = color; }
    void Clear();
    /// Adds nodes below the node of `parentKey` (empty: at the top). Keys that exist already are passed over.
    void AddNodes(const QString& parentKey, std::vector<KeyedNode> nodes);
    /// Another text for a node: the root's, in another language.
    void SetText(const QString& key, const QString& text);
    /// Asks the loader for the children unless that was done already.
    void LoadChildren(const QString& key);
    [[nodiscard]] bool IsLoaded(const QString& key) const;

    [[nodiscard]] QModelIndex IndexOfKey(const QString& key) const; ///< invalid when there is none
    [[nodiscard]] QString KeyAt(const QModelIndex& index) const;
    [[nodiscard]] QString ParentKey(const QString& key) const; ///< empty at the top
    [[nodiscard]] int Count() const { return static_cast<int>(nodes_.size()) - 1; }

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] bool hasChildren(const QModelIndex& parent = {}) const override;
    [[nodiscard]] bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

  private:
    struct Node {
        QString key;
        QString text;
        bool global = false;
        bool loaded = false; ///< nothing more to ask for
        int parent = 0;
        int row = 0;
        std::vector<int> children;
    };
    [[nodiscard]] int NodeOf(const QModelIndex& index) const;
    [[nodiscard]] QModelIndex IndexOf(int node) const;
    void Load(int node);

    std::vector<Node> nodes_; ///< the first one is the invisible top
    QHash<QString, int> byKey_;
    Loader loader_;
    QIcon icon_;
    QColor globalColor_;
};

} // namespace tessaro
