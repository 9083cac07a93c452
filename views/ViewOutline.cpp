// ViewOutline.cpp — walks a built tree through its records, in chain order.
#include <krmwtarn/views/ViewOutline.h>

#include <krmwtarn/platform/views/DLLView.h>

namespace {
void measure(const DLLViewList* list, int level, ViewShape& shape) {
    if (!list) return;
    ++shape.lists;
    if (level > shape.depth) shape.depth = level;
    for (void* item : list->elements) {
        const DLLViewElem* e = static_cast<const DLLViewElem*>(item);
        ++shape.elements;
        if (e->flags == 1) ++shape.delegating;
        measure(e->list, level + 1, shape);
    }
}

void outline(const DLLViewList* list, int level, std::string& out) {
    if (!list) return;
    for (void* item : list->elements) {
        const DLLViewElem* e = static_cast<const DLLViewElem*>(item);
        out.append(static_cast<std::size_t>(2 * level), ' ');
        out += "- ";
        out += e->name ? e->name : "(null)";
        if (e->alias && e->name && std::string(e->alias) != e->name) {
            out += " as ";
            out += e->alias;
        }
        if (e->list) {
            out += " → ";
            out += e->list->className ? e->list->className : "(null)";
        }
        if (e->viewType || e->flags) {
            out += ", flag " + std::to_string(e->flags);
            if (e->viewType) {
                out += ", expanded by view ";
                out += e->viewType->name();
            }
        }
        out += '\n';
        outline(e->list, level + 1, out);
    }
}
}  // namespace

ViewShape measureView(const DLLViewList* root) {
    ViewShape shape;
    measure(root, 1, shape);
    return shape;
}

std::string viewOutline(const DLLViewList* root) {
    std::string out;
    outline(root, 0, out);
    return out;
}
