cmake_minimum_required(VERSION 3.25)

# Checks the exported symbols of the shared libraries: the required ones are exported, and no symbol that is not for plug-ins.
#   cmake -DNM= -DLIBRARY= -DIMAGERY_LIBRARY= -P CheckExports.cmake

execute_process(COMMAND "${NM}" -D -C --defined-only "${LIBRARY}" OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${NM}" -D -C --defined-only "${IMAGERY_LIBRARY}" OUTPUT_VARIABLE imagery COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "\n$" "" output "${output}${imagery}")
string(REPLACE ";" "," output "${output}")
string(REPLACE "\n" ";" lines "${output}")

set(symbols "")
set(strays "")
foreach(line IN LISTS lines)
    string(REGEX REPLACE "^[0-9a-f]+ [A-Za-z] " "" symbol "${line}")
    list(APPEND symbols "${symbol}")
    if(NOT symbol MATCHES "^((typeinfo( name)?|vtable) for |(non-virtual thunk to ))?(oV|Bv_1_1)::"
       OR symbol MATCHES "::detail::|Schema::|IOCodeException")
        list(APPEND strays "${symbol}")
    endif()
endforeach()
if(strays)
    list(JOIN strays "\n  " strays)
    message(FATAL_ERROR "exported, but not for plug-ins:\n  ${strays}")
endif()

foreach(
    required IN
    ITEMS "oV::Roamscan::TimeConversion::timeResolution"
          "oV::Roamscan::TimeConversion::automationTimeResolution"
          "oV::Roamscan::TimeConversion::convertToIntegerTime(double const&)"
          "oV::Roamscan::TimeConversion::getInterpolationFraction(long const&, long const&, long const&)"
          "oV::Roamscan::TrafoT<float>::Random()"
          "oV::Roamscan::TrafoT<double>::Identity()"
          "oV::Roamscan::TrafoT<double>::interpolate(oV::Roamscan::TrafoT<double> const&, double) const"
          "oV::Roamscan::TrafoT<double>::serialize() const"
          "oV::Roamscan::Trajectory::sample(double) const"
          "oV::Roamscan::Trajectory::getStartTime() const"
          "oV::Roamscan::SampledTrajectoryIterator::operator++()"
          "oV::Roamscan::SampledTrajectoryRange::begin() const"
          "oV::Roamscan::InterpolatedTrajectoryPathBuilder::build() const"
          "oV::Roamscan::TrajectoryNode::TrajectoryNode()"
          "oV::Roamscan::TrajectoryNode::operator=(oV::Roamscan::TrajectoryNode&&)"
          "oV::Roamscan::TrajectoryData::read(std::istream&)"
          "oV::Roamscan::TrajectoryData::~TrajectoryData()"
          "Bv_1_1::Directory::appendLevel(Bv_1_1::String const&) const"
          "Bv_1_1::File::fromString(Bv_1_1::Directory const&, Bv_1_1::String const&)"
          "oV::LinearInterpolatedFunctionT<double>::evaluateAt(double const&, double&) const"
          "oV::Roamscan::AnchorSections::insertSection(oV::Roamscan::TimeWindow)"
          "oV::Roamscan::AnchorSections::operator+=(oV::Roamscan::AnchorSections const&)"
          "oV::Roamscan::LargeImageSerialization::readImage(Bv_1_1::SmartPtr<Bv_1_1::File const>)"
          "oV::Roamscan::LargeImageSerialization::serializeImage(cv::Mat const&, Bv_1_1::SmartPtr<Bv_1_1::File const>)"
          "oV::Roamscan::PlaneTarget::setFromPlaneFit(oV::BvFitPlane::PlaneParam const&)"
          "oV::Roamscan::ToleranceThresholds::getThreshold(oV::Roamscan::ToleranceThresholds::ThresholdName, double)"
          "oV::Roamscan::invalidTarget"
          "oV::Roamscan::readExifMetaData(std::istream&)"
          "oV::Roamscan::RoamscanOptionsCont::RoamscanOptionsCont(Bv_1_1::BaseNode::CreateType, oV::Roamscan::RoamscanOptionsCont const*)"
          "oV::Roamscan::RoamscanOptionsCont::Class()"
          "oV::Roamscan::RoamscanOptionsCont::initStatics()"
          "oV::Roamscan::RoamscanOptionsCont::clearStatics()"
          "oV::Roamscan::RoamscanOptionsCont::checkCreateField(Bv_1_1::String const&)"
          "oV::Roamscan::RoamscanOptionsCont::OptionsNames() const"
          "oV::Roamscan::RoamscanOptionsCont::OptionsTypes() const"
          "oV::Roamscan::RoamscanOptionsCont::initializeCustomAttributes()"
          "oV::Roamscan::RoamscanOptionsCont::updateToCurrentOptions()"
          "oV::Roamscan::RoamscanOptionsCont::attrDefs"
          "oV::Roamscan::RoamscanOptionsCont::attrNames"
          "oV::Roamscan::RoamscanOptionsCont::attrDefMap"
          "vtable for oV::Roamscan::RoamscanOptionsCont"
          "oV::Roamscan::RoamscanOptions::RoamscanOptions(oV::Roamscan::RoamscanOptions const&)"
          "oV::Roamscan::RoamscanOptions::Class()"
          "oV::Roamscan::RoamscanOptions::setup(oV::Roamscan::RoamscanOptionsCont*)"
          "oV::Roamscan::RoamscanOptions::the()"
          "oV::Roamscan::RoamscanOptions::available()"
          "oV::Roamscan::RoamscanOptions::getLock()"
          "oV::Roamscan::RoamscanOptions::getOpts()"
          "oV::Roamscan::RoamscanOptions::cleanUp()"
          "oV::Roamscan::RoamscanOptions::initStatics()"
          "oV::Roamscan::RoamscanOptions::clearStatics()"
          "oV::Roamscan::RoamscanOptions::instance"
          "oV::Roamscan::RoamscanOptions::lock"
          "vtable for oV::Roamscan::RoamscanOptions"
          "oV::Roamscan::RoamscanOptionsHost::setup(oV::Roamscan::RoamscanOptionsCont*)"
          "oV::Roamscan::RoamscanOptionsJsonMerger::m_seperator"
          "typeinfo for oV::Attr<bool>"
          "typeinfo for oV::CustAttr<Bv_1_1::String>"
          "vtable for oV::Roamscan::IRoamscanData"
          "vtable for oV::Roamscan::InterpolatedTrajectoryPathBuilder"
          "typeinfo for oV::InternalErrorException"
          "typeinfo for oV::VisibleException"
          "typeinfo for oV::ExceptionBase"
          "oV::KeyTable::addEntry(unsigned int, Bv_1_1::String const&)"
          "oV::DataInFormat<double>::get()"
          "oV::DataOutFormat<Bv_1_1::String>::put(Bv_1_1::String const&)"
          "oV::ModelInFormat::getKeyword()"
          "oV::ModelOutFormat::startValue(Bv_1_1::String const&)"
          "oV::Observer::addObserver(oV::Observer*, oV::Observer::Notice)"
          "oV::Observer::srcToCopyTable()"
          "oV::BlockUpdateObservers::~BlockUpdateObservers()"
          "oV::ThreadLocalStorage::getData() const"
          "oV::InfoFailed::Class()"
          "oV::CachedAttributeInfo::getClassType() const"
          "oV::Attribute::keyTable()"
          "oV::Attr<bool>::assignFrom(bool const&, oV::Observer*, void*)"
          "oV::Attr<double>::readFrom(std::istream*, oV::ReadContextBase*)"
          "oV::Attr<Bv_1_1::String>::Class()"
          "oV::CustAttr<int>::CustAttr(Bv_1_1::BaseNode::CreateType, oV::Attribute const*)"
          "vtable for oV::CustAttr<Bv_1_1::String>"
          "vtable for oV::AttrVal<int>"
          "oV::NewValueInfo<double>::getClassType() const"
          "oV::AttrContainer::addAttribute(oV::Attribute*, Bv_1_1::String const&)"
          "vtable for oV::AttrContainer"
          "oV::ReadFromScope::~ReadFromScope()"
          "oV::WriteToScope::~WriteToScope()"
          "typeinfo for oV::ReadContextBase"
          "typeinfo for oV::WriteContextBase"
          "oV::Models::list"
          "oV::Endianness::bigEndian"
          "Bv_1_1::String::NIL")
    if(NOT required IN_LIST symbols)
        message(FATAL_ERROR "not exported: ${required}")
    endif()
endforeach()
list(LENGTH symbols count)
message("${count} symbols are exported, all for plug-ins")
