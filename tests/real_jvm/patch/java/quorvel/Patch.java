package java.quorvel;

class Patch {}
