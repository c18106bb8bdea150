#include "CoreTypes/Model/Geometry.hpp"

#include "CoreTypes/Hasher.hpp"

std::size_t std::hash<screenweaver::Point>::operator()(const screenweaver::Point& point) const noexcept {
    return screenweaver::hashFields(point.x, point.y);
}

std::size_t std::hash<screenweaver::Size>::operator()(const screenweaver::Size& size) const noexcept {
    return screenweaver::hashFields(size.width, size.height);
}

std::size_t std::hash<screenweaver::Rect>::operator()(const screenweaver::Rect& rect) const noexcept {
    const screenweaver::Rect standard = rect.standardized();
    return screenweaver::hashFields(standard.origin.x, standard.origin.y, standard.size.width,
                                    standard.size.height);
}
