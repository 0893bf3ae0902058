// What starting any process costs.

int main()
{
    return 0;
}
