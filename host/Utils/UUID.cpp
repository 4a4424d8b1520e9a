#include "Utils/UUID.h"

#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid_io.hpp>

namespace Zorv {

UUID UUID::generate() {
  thread_local boost::uuids::random_generator generator;
  return UUID(generator());
}

std::string UUID::toString() const { return boost::uuids::to_string(_value); }

}  // namespace Zorv
