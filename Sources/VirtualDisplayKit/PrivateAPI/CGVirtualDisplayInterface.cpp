#include "VirtualDisplayKit/PrivateAPI/CGVirtualDisplayInterface.hpp"

namespace screenweaver::CGVirtualDisplayInterface {

Selectors::Selectors(const platform::ObjCRuntime& runtime)
    : init(runtime.selector("init")),
      setQueue(runtime.selector("setQueue:")),
      setName(runtime.selector("setName:")),
      setMaxPixelsWide(runtime.selector("setMaxPixelsWide:")),
      setMaxPixelsHigh(runtime.selector("setMaxPixelsHigh:")),
      setSizeInMillimeters(runtime.selector("setSizeInMillimeters:")),
      setSerialNum(runtime.selector("setSerialNum:")),
      setVendorID(runtime.selector("setVendorID:")),
      setProductID(runtime.selector("setProductID:")),
      initWithWidthHeightRefreshRate(runtime.selector("initWithWidth:height:refreshRate:")),
      setModes(runtime.selector("setModes:")),
      setHiDPI(runtime.selector("setHiDPI:")),
      setRotation(runtime.selector("setRotation:")),
      initWithDescriptor(runtime.selector("initWithDescriptor:")),
      applySettings(runtime.selector("applySettings:")),
      displayID(runtime.selector("displayID")),
      setSerialNumber(runtime.selector("setSerialNumber:")),
      setRedPrimary(runtime.selector("setRedPrimary:")),
      setGreenPrimary(runtime.selector("setGreenPrimary:")),
      setBluePrimary(runtime.selector("setBluePrimary:")),
      setWhitePoint(runtime.selector("setWhitePoint:")),
      initWithWidthHeightRefreshRateTransferFunction(
          runtime.selector("initWithWidth:height:refreshRate:transferFunction:")),
      setIsReference(runtime.selector("setIsReference:")) {}

}  // namespace screenweaver::CGVirtualDisplayInterface
