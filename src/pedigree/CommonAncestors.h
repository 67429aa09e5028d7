#pragma once

#include "Inbreeding.h"

#include <vector>

namespace tarvex {

/// An ancestor found on both the sire's and the dam's side of a pedigree, with its share of
/// the offspring's coefficient by Wright's formula: (1/2)^(n1+n2+1) (1 + F_A) over every pair
/// of lines from sire and dam that meet only in it.
struct CommonAncestor
{
    int position = -1;        // in the graph the shares were found in
    double timesSire = 0;     // the places it holds on the sire's side, the sire itself counted
    double timesDam = 0;
    double contribution = 0;  // 0 to 1; all of them add up to the offspring's coefficient
};

/// The common ancestors of a mating of sire and dam (positions in the graph the inbreeding
/// was worked on), the largest share first. Meant for one animal's own pedigree
/// (ancestorsOf): its cost grows with the square of the graph.
///
/// Every pair of lines up to an ancestor A first meets in one animal M, after which the two
/// go on to A any way they like; so the sum over all pairs, T_sA T_dA, is the sum over M of
/// the pairs meeting only in M times T_MA squared. Taking the ancestors youngest first, each
/// one's own pairs are what is left of its sum once those of its descendants are taken off.
std::vector<CommonAncestor> Common_Ancestors(const Inbreeding &inbreeding, int sire, int dam);

} // namespace tarvex
