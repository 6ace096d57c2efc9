#pragma once

#include <boost/math/policies/policy.hpp>

namespace ptick::compare {

/// How Boost.Math computes here. Long doubles would take many times as long, for digits that nobody
/// reads. A probability is 0 where it is below what doubles hold.
using BoostPolicy = boost::math::policies::policy<
    boost::math::policies::promote_double<false>,
    boost::math::policies::underflow_error<boost::math::policies::ignore_error>,
    boost::math::policies::evaluation_error<boost::math::policies::ignore_error>>;

}  // namespace ptick::compare
