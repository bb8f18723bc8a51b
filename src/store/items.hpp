// Downloaded elements as objects.
#pragma once

#include "quill1xml/node.hpp"
#include "quill1xml/ports.hpp"

#include <memory>
#include <utility>
#include <vector>

namespace quill1xml::store {

/// Objects over nodes, in their order, with the host's own objects where the environment makes such.
template <class Item>
std::vector<Item> itemsOf(std::vector<Node> nodes, const std::shared_ptr<const ports::Environment>& environment) {
    std::vector<std::shared_ptr<void>> objects(nodes.size());
    if (environment != nullptr && environment->objects != nullptr) {
        objects = environment->objects->make(Item::className, nodes);
    }
    std::vector<Item> items;
    items.reserve(nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        items.emplace_back(std::move(nodes[i]), environment, std::move(objects[i]));
    }
    return items;
}

}  // namespace quill1xml::store
