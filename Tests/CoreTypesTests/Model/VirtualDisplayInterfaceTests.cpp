#include <functional>
#include <gtest/gtest.h>

#include "CoreTypes/Model/VirtualDisplayAvailability.hpp"
#include "CoreTypes/Model/VirtualDisplayHandle.hpp"
#include "CoreTypes/Protocols/DisplayProviding.hpp"
#include "CoreTypes/Protocols/DisplaySleeping.hpp"
#include "CoreTypes/Protocols/VirtualDisplayManaging.hpp"

namespace screenweaver {
namespace {

VirtualDisplaySpec sampleSpec() {
    return VirtualDisplaySpec{.id = *UUID::parse("12345678-9ABC-DEF0-1234-56789ABCDEF0"),
                              .name = "Studio",
                              .pixelWidth = 5120,
                              .pixelHeight = 1440,
                              .refreshRate = 60.0};
}

TEST(VirtualDisplayAvailability, AvailableEqualsAvailable) {
    EXPECT_EQ(VirtualDisplayAvailability::available(), VirtualDisplayAvailability::available());
}

TEST(VirtualDisplayAvailability, UnavailableEqualsUnavailableWithTheSameReason) {
    EXPECT_EQ(VirtualDisplayAvailability::unavailable("x"), VirtualDisplayAvailability::unavailable("x"));
}

TEST(VirtualDisplayAvailability, UnavailableDiffersByReasonAndFromAvailable) {
    EXPECT_NE(VirtualDisplayAvailability::unavailable("x"), VirtualDisplayAvailability::unavailable("y"));
    EXPECT_NE(VirtualDisplayAvailability::unavailable("x"), VirtualDisplayAvailability::available());
}

TEST(VirtualDisplayHandle, HandlesWithDensitiesZeroAndNegativeZeroAreEqualAndHashAlike) {
    const VirtualDisplayHandle positive{sampleSpec(), 7, 0.0};
    const VirtualDisplayHandle negative{sampleSpec(), 7, -0.0};
    EXPECT_EQ(positive, negative);
    EXPECT_EQ(std::hash<VirtualDisplayHandle>{}(positive), std::hash<VirtualDisplayHandle>{}(negative));
}

TEST(VirtualDisplayHandle, DiffersByDisplayIDAndDensity) {
    EXPECT_NE((VirtualDisplayHandle{sampleSpec(), 7, 110.0}), (VirtualDisplayHandle{sampleSpec(), 8, 110.0}));
    EXPECT_NE((VirtualDisplayHandle{sampleSpec(), 7, 110.0}), (VirtualDisplayHandle{sampleSpec(), 7, 220.0}));
}

// A manager that never creates anything, to check that the interface can be implemented and
// called as the rest of the system does.
class NothingCreatedManager final : public VirtualDisplayManaging {
public:
    VirtualDisplayAvailability availability() const override {
        return VirtualDisplayAvailability::available();
    }
    std::expected<VirtualDisplayHandle, VirtualDisplayError> create(const VirtualDisplaySpec&,
                                                                    const StopToken&) override {
        return std::unexpected(VirtualDisplayError::notActiveAfterCreation());
    }
    void release(const VirtualDisplayHandle&, const StopToken&) override {}
    std::int64_t releaseOrphans(const StopToken&) override { return 0; }
};

TEST(VirtualDisplayManaging, ReleaseOrphansOnAManagerThatNeverCreatedAnythingReturnsZero) {
    NothingCreatedManager manager;
    VirtualDisplayManaging& managing = manager;
    const StopToken stop;
    EXPECT_EQ(managing.releaseOrphans(stop), 0);
    const auto created = managing.create(sampleSpec(), stop);
    ASSERT_FALSE(created.has_value());
    EXPECT_EQ(created.error().description(), "notActiveAfterCreation");
}

}  // namespace
}  // namespace screenweaver
